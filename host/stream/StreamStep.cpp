#include "host/stream/StreamStep.h"

#include <algorithm>
#include <array>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "host/guard/Printable.h"
#include "host/guard/Text.h"

namespace tarni::host {

using Kind = StreamStep::Kind;

namespace {

const std::map<std::string, Kind>& kinds() {
  static const std::map<std::string, Kind> all = {{"Click", Kind::Click},
                                                  {"ClickButton", Kind::Click},
                                                  {"ClickImage", Kind::Click},
                                                  {"TypeTextOnEditBox", Kind::Type},
                                                  {"Mobile_SelectSwitch", Kind::SwitchOn},
                                                  {"Mobile_DeSelectSwitch", Kind::SwitchOff}};
  return all;
}

Kind kindOf(const std::string& action) {
  if (action.empty()) throw std::invalid_argument("the step has no \"action\"");
  const auto found = kinds().find(action);
  if (found != kinds().end()) return found->second;
  throw std::invalid_argument("the action " + inQuotes(action) + " is not known");
}

// Pictures of pages come as addresses.
std::string withoutAddress(std::string picture) {
  constexpr std::string_view kStart = "data:image/jpeg;base64,";
  if (picture.starts_with(kStart)) picture.erase(0, kStart.size());
  return picture;
}

bool mentions(const Json& view, const char* part) {
  return lowerCase(textIn(view, "classname")).find(part) != std::string::npos;
}

// Whether the text is what the element is called by, not what it is set to or holds: that differs
// before and after the very tap.
bool isOwnText(const StreamStep& step, const Json& parent) {
  if (mentions(parent, "segmentedcontrol") || mentions(parent, "textview")) return false;
  const bool isSwitch = step.kind == Kind::SwitchOn || step.kind == Kind::SwitchOff;
  if (isSwitch && (step.text == "0" || step.text == "1")) return false;
  constexpr std::array kHoldValues = {"UIControl", "UIPickerView", "UIProgressView",
                                      "UISlider",  "UIStepper",    "UITextView"};
  return std::find(kHoldValues.begin(), kHoldValues.end(), step.className) == kHoldValues.end();
}

}  // namespace

StreamStep StreamStep::fromJson(const Json& step) {
  if (!step.is_object()) throw std::invalid_argument("the step is no JSON object");
  StreamStep recorded;
  recorded.action = textIn(step, "action");
  recorded.kind = kindOf(recorded.action);
  const auto arguments = step.value("arguments", Json());
  if (!arguments.is_array() || arguments.empty()) {
    throw std::invalid_argument("the step has no \"arguments\"");
  }
  const auto& object = arguments.front();
  if (!object.is_object()) throw std::invalid_argument("the step names no element");
  recorded.className = textIn(object, "className");
  if (recorded.className.empty()) throw std::invalid_argument("the step has no \"className\"");
  recorded.text = textIn(object, "sahiText");
  recorded.isTextItsOwn = isOwnText(recorded, objectIn(object, "parent"));
  recorded.id = textIn(object, "id");
  recorded.label = textIn(object, "label");
  recorded.xpath = textIn(object, "xpath:position");
  recorded.index = wholeNumberIn<std::size_t>(textIn(object, "index"));
  recorded.isInPage = textIn(object, "mode") == "web";
  recorded.picture = withoutAddress(textIn(object, "ObjectImage"));
  if (arguments.size() > 1) recorded.data = textIn(arguments[1], "data");
  return recorded;
}

std::string StreamStep::element() const {
  const auto name = printable(className);
  return text.empty() ? name : name + " " + inQuotes(text);
}

std::string StreamStep::deed() const {
  switch (kind) {
    case Kind::Click:
      return "click";
    case Kind::Type:
      return "type " + inQuotes(data) + " into";
    case Kind::SwitchOn:
      return "switch on";
    case Kind::SwitchOff:
      break;
  }
  return "switch off";
}

}  // namespace tarni::host
