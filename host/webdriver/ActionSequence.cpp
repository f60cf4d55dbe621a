#include "host/webdriver/ActionSequence.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string_view>

#include "host/guard/Text.h"
#include "host/session/Step.h"
#include "host/webdriver/Error.h"
#include "host/webdriver/Keys.h"

namespace tarni::host::webdriver {

namespace {

using Kind = ActionItem::Kind;

constexpr const char* kButtons[] = {"left", "middle", "right", "back", "forward"};
constexpr double kLongestDuration = 600'000;  // of one duration, in milliseconds

[[noreturn]] void refuseAction(const std::string& why) {
  throw Error("invalid argument", why);
}

double numberAt(const Json& item, const char* name, double usual) {
  const auto found = item.find(name);
  if (found == item.end() || found->is_null()) return usual;
  if (!found->is_number()) refuseAction("\"" + std::string(name) + "\" of an action is a number");
  return found->get<double>();
}

void readDuration(const Json& item, ActionItem& action) {
  const double duration = numberAt(item, "duration", 0);
  if (duration < 0 || duration > kLongestDuration)
    refuseAction("\"duration\" is from 0 to 600000 milliseconds");
  action.duration = std::chrono::milliseconds(static_cast<long>(duration));
}

void readKey(const Json& item, ActionItem& action) {
  const auto characters = charactersOf(textIn(item, "value"));
  if (characters.size() != 1) refuseAction("\"value\" of a key is one character");
  action.key = keyNamed(characters.front());
  if (action.key.empty()) refuseAction("\"value\" is no key");
}

void readButton(const Json& item, ActionItem& action) {
  const double button = numberAt(item, "button", 0);
  if (button < 0 || button >= std::size(kButtons)) refuseAction("\"button\" is from 0 to 4");
  action.button = kButtons[static_cast<std::size_t>(button)];
}

void readPlace(const Json& item, ActionItem& action) {
  readDuration(item, action);
  action.x = numberAt(item, "x", 0);
  action.y = numberAt(item, "y", 0);
  action.origin = item.value("origin", Json("viewport"));
  const bool isWord = action.origin == "viewport" || action.origin == "pointer";
  if (!isWord && !action.origin.is_object()) {
    refuseAction("\"origin\" is \"viewport\", \"pointer\" or an element");
  }
}

void readScroll(const Json& item, ActionItem& action) {
  readPlace(item, action);
  action.right = numberAt(item, "deltaX", 0) / kPointsANotch;
  action.down = numberAt(item, "deltaY", 0) / kPointsANotch;
}

struct KnownItem {
  std::string_view source;
  std::string_view name;
  Kind kind;
  void (*read)(const Json& item, ActionItem& action);
};
constexpr KnownItem kItems[] = {
    {"key", "keyDown", Kind::KeyDown, readKey},
    {"key", "keyUp", Kind::KeyUp, readKey},
    {"pointer", "pointerDown", Kind::PointerDown, readButton},
    {"pointer", "pointerUp", Kind::PointerUp, readButton},
    {"pointer", "pointerMove", Kind::PointerMove, readPlace},
    {"wheel", "scroll", Kind::Scroll, readScroll},
};

ActionItem readItem(const std::string& source, const Json& item) {
  ActionItem action;
  const auto type = textIn(item, "type");
  if (type == "pause") {
    readDuration(item, action);
    return action;
  }
  const auto* const row = std::ranges::find_if(
      kItems, [&](const KnownItem& one) { return one.source == source && one.name == type; });
  if (row == std::end(kItems))
    refuseAction("\"" + type + "\" is no action of a source \"" + source + "\"");
  action.kind = row->kind;
  row->read(item, action);
  return action;
}

std::string pointerTypeOf(const Json& source) {
  return textIn(objectIn(source, "parameters"), "pointerType");
}

void checkSource(const Json& source) {
  const auto type = textIn(source, "type");
  if (type != "none" && type != "key" && type != "pointer" && type != "wheel") {
    refuseAction("\"type\" of a source is none, key, pointer or wheel");
  }
  if (textIn(source, "id").empty()) refuseAction("\"id\" of a source is a text");
  const auto pointer = pointerTypeOf(source);
  if (!pointer.empty() && pointer != "mouse" && pointer != "pen" && pointer != "touch") {
    refuseAction("\"pointerType\" is mouse, pen or touch");
  }
}

}  // namespace

std::vector<ActionSource> readActions(const Json& actions) {
  if (!actions.is_array()) refuseAction("\"actions\" is a list");
  std::vector<ActionSource> sources;
  for (const auto& source : actions) {
    if (!source.is_object()) refuseAction("a source is an object");
    checkSource(source);
    const auto items = source.find("actions");
    if (items == source.end() || !items->is_array())
      refuseAction("\"actions\" of a source is a list");
    ActionSource read{.id = textIn(source, "id"),
                      .isPointer = textIn(source, "type") == "pointer",
                      .isFinger = pointerTypeOf(source) == "touch",
                      .items = {}};
    for (const auto& item : *items) read.items.push_back(readItem(textIn(source, "type"), item));
    sources.push_back(std::move(read));
  }
  return sources;
}

}  // namespace tarni::host::webdriver
