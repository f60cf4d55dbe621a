#include <nlohmann/json.hpp>

#include "agent/AI/AiAPI.h"
#include "agent/commands/NativeCommands.h"
#include "agent/core/state/Utilities_Text.h"
#include "agent/elements/Utilities.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"

namespace tarni::commands {

using nlohmann::ordered_json;
using platform::UIViewRef;

namespace {

void append(ordered_json& entries, ordered_json more) {
  for (ordered_json& entry : more) entries.push_back(std::move(entry));
}

}  // namespace

// A UISwitch answers twice: as a switch, and as a view that is called one. Kept: host tools rely
// on it.
Entries isselected(FunctionCallObject command) {
  ordered_json entries = ordered_json::array();
  const UIViewRef element = elementOf(command);
  if (!element) co_return entries;
  try {
    if (element->isKindOfClass(platform::uikit::UISwitch)) {
      append(entries, output(Utilities::isOn(element)));
    }
    if (element->getClass()->lowercaseName().find("switch") != std::string::npos) {
      append(entries, output(Utilities::isOn(element)));
    }
  } catch (const std::exception&) {
    // A view that has no such state is not selected.
    append(entries, output(false));
  }
  co_return entries;
}

Entries isenabled(FunctionCallObject command) {
  const UIViewRef element = elementOf(command);
  if (!element) co_return ordered_json::array();
  co_return output(element->isUserInteractionEnabled());
}

// The frame is compared as the element reports it, in its superview's coordinates.
Entries isdisplayed(FunctionCallObject command) {
  const UIViewRef element = elementOf(command);
  if (!element) co_return ordered_json::array();
  co_return output(platform::current().mainScreen->bounds().contains(element->frame()));
}

Entries gettext(FunctionCallObject command) {
  const UIViewRef element = elementOf(command);
  if (!element) co_return ordered_json::array();
  co_return output(Utilities::getUIViewTextForPlayBack(element));
}

Entries getheight(FunctionCallObject command) {
  const UIViewRef element = elementOf(command);
  if (!element) co_return ordered_json::array();
  co_return output(Utilities::decimalText(element->bounds().size.height, 0));
}

Entries getwidth(FunctionCallObject command) {
  const UIViewRef element = elementOf(command);
  if (!element) co_return ordered_json::array();
  co_return output(Utilities::decimalText(element->bounds().size.width, 0));
}

Entries ai_getscreensnapshot(FunctionCallObject) {
  const AiAPI api;
  std::string image = co_await api.getBase64ImageOfCurrentWindow();
  co_return output(std::move(image));
}

}  // namespace tarni::commands
