#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/source/Attributes.h"
#include "host/webdriver/Error.h"
#include "host/webdriver/Keys.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

bool isKind(const Json& element, const char* kind) {
  const auto kinds = element.find("kinds");
  return kinds != element.end() && std::ranges::find(*kinds, Json(kind)) != kinds->end();
}

bool isEditable(const Json& element) {
  return attributeOf(element, "editable") == "true";
}

// What typing it makes of a text, where no keyboard does that.
std::string withTyped(const std::string& text, const std::string& typed) {
  auto characters = charactersOf(text);
  for (const auto& character : charactersOf(typed)) {
    const auto key = keyNamed(character);
    if (key == character || key == "Enter") {
      characters.push_back(character);
    } else if (key == "Backspace") {
      if (!characters.empty()) characters.pop_back();
    } else {
      throw Error("unsupported operation", "there is no keyboard here with a key " + key);
    }
  }
  std::string all;
  for (const auto& character : characters) all += character;
  return all;
}

// Of the standard: a text goes behind what is there.
void goToEnd(Session& session, const Json& element, long handle) {
  const bool isEmpty = attributeOf(element, "text").value_or("").empty();
  const bool hasFocus = attributeOf(element, "focused") == "true";
  if (!isEditable(element) || isEmpty || hasFocus) return;
  const auto* const keys = isKind(element, "UITextView") ? "Control+End" : "End";
  session.call("input.keys", {{"element", handle}, {"steps", Json::array({keys})}});
}

}  // namespace

std::string typed(const Arguments& arguments) {
  const auto text = arguments.body.find("text");
  if (text != arguments.body.end() && text->is_string()) return text->get<std::string>();
  const auto characters = arguments.body.find("value");
  if (characters == arguments.body.end() || !characters->is_array()) return arguments.text("text");
  std::string all;
  for (const auto& character : *characters) all += character.get<std::string>();
  return all;
}

Json click(Session& session, const Arguments& arguments) {
  session.call("element.click", {{"element", elementOf(arguments.path.front())}});
  return nullptr;
}

Json clear(Session& session, const Arguments& arguments) {
  const long handle = elementOf(arguments.path.front());
  if (!isEditable(session.described(handle))) {
    throw Error("invalid element state", "the element holds no text that can be edited");
  }
  session.call("element.setText", {{"element", handle}, {"text", ""}});
  return nullptr;
}

Json sendKeys(Session& session, const Arguments& arguments) {
  const long handle = elementOf(arguments.path.front());
  const auto text = typed(arguments);
  const Json element = session.described(handle);
  if (attributeOf(element, "enabled") != "true") {
    throw Error("element not interactable", "the element is disabled");
  }
  if (!session.hasInput()) {
    const auto before = attributeOf(element, "text").value_or("");
    session.call("element.setText", {{"element", handle}, {"text", withTyped(before, text)}});
    return nullptr;
  }
  goToEnd(session, element, handle);
  session.call("element.focus", {{"element", handle}});
  typeText(session, text);
  return nullptr;
}

}  // namespace tarni::host::webdriver
