#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/guard/Text.h"
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

// Before any of it is typed, as clients ask again for what has failed.
void requireKeysOfScreen(const std::string& text) {
  constexpr std::string_view kKeys[] = {"", "Shift", "Control", "Meta", "Backspace", "Enter"};
  for (const auto& character : charactersOf(text)) {
    const auto key = keyNamed(character);
    if (charactersOf(key).size() > 1 && std::ranges::find(kKeys, key) == std::end(kKeys)) {
      throw Error("unsupported operation", "the keyboard on the screen has no key " + key);
    }
  }
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
  // A keyboard on the screen goes on behind what a field holds that gets the focus.
  if (session.hasInput()) {
    goToEnd(session, element, handle);
  } else {
    requireKeysOfScreen(text);
  }
  session.call("element.focus", {{"element", handle}});
  typeText(session, text);
  return nullptr;
}

}  // namespace tarni::host::webdriver
