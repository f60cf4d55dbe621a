#include "host/export/ExportedElement.h"

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <vector>

#include "host/session/Step.h"
#include "host/session_client/Selector.h"
#include "host/source/SourceTree.h"
#include "host/source/XPathLiteral.h"

namespace tarni::host {

namespace {

std::vector<std::string> conditionsOf(const Selector& selector) {
  std::vector<std::string> all;
  const auto equals = [&all](const char* attribute, const Selector::Member& wanted) {
    if (wanted) all.push_back("@" + std::string(attribute) + "=" + xpathLiteral(*wanted));
  };
  equals("id", selector.identifier);
  equals("label", selector.label);
  equals("text", selector.text);
  equals("placeholder", selector.placeholder);
  if (selector.textContains) {
    all.push_back("contains(@text, " + xpathLiteral(*selector.textContains) + ")");
  }
  if (selector.isVisible) equals("visible", *selector.isVisible ? "true" : "false");
  if (selector.isFocused) equals("focused", *selector.isFocused ? "true" : "false");
  if (selector.group) {
    const auto name = xpathLiteral(*selector.group);
    all.push_back("ancestor::*[@id=" + name + " or @label=" + name + "]");
  }
  return all;
}

// "\UIView[0]\UIButton[1]" counts from 0, XPath from 1.
std::string pathOf(const std::string& position) {
  std::string path;
  for (std::size_t begin = 0; begin < position.size();) {
    const auto end = std::min(position.find('\\', begin + 1), position.size());
    const auto part = position.substr(begin + 1, end - begin - 1);
    const auto bracket = std::min(part.find('['), part.size());
    const long index = std::strtol(part.c_str() + std::min(bracket + 1, part.size()), nullptr, 10);
    path +=
        "/" + SourceTree::tagOf(part.substr(0, bracket)) + "[" + std::to_string(index + 1) + "]";
    begin = end;
  }
  return path;
}

// A position in a page says nothing of the view that the page stands in.
std::string topOf(const std::string& position, const std::string& window) {
  if (position.starts_with("\\HTML[")) return window + "/";
  return window.empty() ? "/UIApplication/*" : window;
}

std::string xpathOf(const Selector& selector) {
  const std::string window =
      selector.windowTitle ? "/UIApplication/*[@title=" + xpathLiteral(*selector.windowTitle) + "]"
                           : "";
  auto path =
      selector.xpath
          ? topOf(*selector.xpath, window) + pathOf(withBackslashes(*selector.xpath))
          : window + "//" + (selector.className ? SourceTree::tagOf(*selector.className) : "*");
  const char* before = "[";
  for (const auto& condition : conditionsOf(selector)) {
    path += before + condition;
    before = " and ";
  }
  return *before == '[' ? path : path + "]";
}

}  // namespace

ExportedElement ExportedElement::fromFind(const Json& find) {
  const auto selector = Selector::fromParameters(find);
  const auto saysOnly = [&selector](Selector::Member Selector::*member) {
    Selector rest = selector;
    (rest.*member).reset();
    return selector.*member && rest.isEmpty();
  };
  if (saysOnly(&Selector::identifier)) return {By::Id, *selector.identifier};
  if (saysOnly(&Selector::kind)) return {By::ClassName, *selector.kind};
  return {By::XPath, xpathOf(selector)};
}

ExportedElement ExportedElement::fromElement(const Json& element) {
  const auto ways = locatorsIn(element);
  if (ways.empty()) throw std::invalid_argument("the step says no way to find its element");
  auto exported = fromFind(ways.front());
  exported.isShown = element.value("visible", true);
  exported.isFocused = element.value("focused", false);
  return exported;
}

}  // namespace tarni::host
