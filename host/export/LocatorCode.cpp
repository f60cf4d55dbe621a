#include "host/export/LocatorCode.h"

#include <algorithm>
#include <cctype>
#include <nlohmann/json.hpp>

#include "host/guard/Printable.h"
#include "host/session_client/Selector.h"

namespace tarni::host {

namespace {

std::string literal(const std::string& text) {
  return compact(Json(text));
}

const char* wayOf(const ExportedElement& element, const char* id, const char* className,
                  const char* xpath) {
  switch (element.by) {
    case ExportedElement::By::Id:
      return id;
    case ExportedElement::By::ClassName:
      return className;
    case ExportedElement::By::XPath:
      break;
  }
  return xpath;
}

std::string wordOfShell(const std::string& text) {
  const auto isPlain = [](unsigned char c) {
    return std::isalnum(c) != 0 || std::string_view("_./-").find(c) != std::string_view::npos;
  };
  return !text.empty() && std::ranges::all_of(text, isPlain) ? text : quotedForShell(text);
}

}  // namespace

std::string inPython(const ExportedElement& element) {
  return std::string("By.") + wayOf(element, "ID", "CLASS_NAME", "XPATH") + ", " +
         literal(element.value);
}

std::string inJavaScript(const ExportedElement& element) {
  return literal(wayOf(element, "id=", "", "") + element.value);
}

std::string inJava(const ExportedElement& element) {
  return std::string("By.") + wayOf(element, "id", "className", "xpath") + "(" +
         literal(element.value) + ")";
}

Json linesOfCode(const Json& find, const std::string& program) {
  const auto element = ExportedElement::fromFind(find);
  return {{"tarni", "tarni --in " + wordOfShell(program) + " click --select " +
                        wordOfShell(Selector::fromParameters(find).written())},
          {"Python", "driver.find_element(" + inPython(element) + ")"},
          {"JavaScript", "await driver.$(" + inJavaScript(element) + ");"},
          {"Java", "driver.findElement(" + inJava(element) + ");"}};
}

}  // namespace tarni::host
