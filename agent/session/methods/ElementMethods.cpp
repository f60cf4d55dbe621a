#include <algorithm>

#include "agent/interaction/PlayBackInteractionMethods.h"
#include "agent/recording/OwnActs.h"
#include "agent/session/input/Acting.h"
#include "agent/session/input/HeldInput.h"
#include "agent/session/input/Keys.h"
#include "agent/session/methods/Handlers.h"
#include "agent/session/screen/Description.h"
#include "agent/session/screen/Elements.h"
#include "agent/session/screen/Locators.h"
#include "agent/session/screen/Pages.h"
#include "agent/session/screen/Pictures.h"
#include "agent/session/screen/Selector.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"
#include "platform/UIKit/UIItems.h"

namespace tarni::session::element {

namespace uikit = platform::uikit;
using platform::Task;
using platform::UIViewRef;

namespace {

Handle handleIn(const CallRef& call) {
  return call->parameters()["element"].get<Handle>();
}

UIViewRef viewIn(const CallRef& call) {
  return Elements::sharedInstance().viewOf(handleIn(call));
}

// Null for a view.
const PageElement* pageElementIn(const CallRef& call) {
  return Elements::sharedInstance().pageElementOf(handleIn(call));
}

// Null when the element itself is to be hit, wherever.
std::optional<platform::CGPoint> placeIn(const Json& parameters) {
  if (!parameters.contains("x") || !parameters.contains("y")) return std::nullopt;
  return platform::CGPoint{parameters["x"].get<double>(), parameters["y"].get<double>()};
}

[[noreturn]] void refuse(const UIViewRef& view, const std::string& why) {
  throw SessionError(errors::kUnsupported, "a " + view->getClass()->name() + " " + why);
}

// As a person does who marks all and types, in an editor that only its own keys reach.
Task<void> retype(CallRef call, std::string text) {
  HeldInput& held = *call->held();
  co_await pressKeys(held, "Control+a", held.devices());
  if (text.empty()) {
    co_await pressKeys(held, "Backspace", held.devices());
  } else {
    co_await held.devices().commitText(std::move(text));
  }
}

// The view may have gone with what it was given.
void leaveOutOfRecording(const CallRef& call) {
  try {
    OwnActs::leaveOut(viewIn(call));
  } catch (const SessionError&) {
  }
}

Task<void> press(CallRef call, platform::UIWindowRef window, platform::CGPoint point) {
  const Json& parameters = call->parameters();
  const platform::PointerButton button = buttonNamed(parameters.value("button", "left"));
  const long count = parameters.value("count", 1L);
  const KeyChord modifiers(parameters.value("modifiers", ""));
  HeldInput& held = *call->held();
  platform::InputDevices& devices = held.devices();
  co_await devices.movePointer(window, point);
  co_await modifiers.press(held, devices);
  for (long turn = 0; turn < count; ++turn) {
    co_await held.setButton(button, true, devices);
    co_await held.setButton(button, false, devices);
  }
  co_await modifiers.release(held, devices);
}

void requireClick(const Json& parameters) {
  const platform::PointerButton button = buttonNamed(parameters.value("button", "left"));
  const long count = parameters.value("count", 1L);
  if (count < 1 || count > 3) {
    throw SessionError(errors::kInvalidArgument, "\"count\" is 1, 2 or 3");
  }
  const std::string modifiers = parameters.value("modifiers", "");
  const KeyChord known(modifiers);
  const bool isTap = button == platform::PointerButton::Left && modifiers.empty();
  if (isTap || platform::current().inputDevices) return;
  throw SessionError(
      errors::kUnsupported,
      "this platform has fingers and no mouse: they have one button and no modifiers");
}

bool isPlainClick(const Json& parameters) {
  return buttonNamed(parameters.value("button", "left")) == platform::PointerButton::Left &&
         parameters.value("count", 1L) == 1 && parameters.value("modifiers", "").empty() &&
         !placeIn(parameters);
}

Task<void> pressIn(CallRef call, PageElement element) {
  const platform::CGPoint point = co_await readyToPress(element, placeIn(call->parameters()));
  platform::UIWindowRef window = webViewOf(element)->window();
  co_await press(call, std::move(window), point);
}

Task<void> setSwitch(UIViewRef view, bool on) {
  const auto control = platform::as<platform::UISwitch>(view);
  if (control->isOn() != on) co_await control->setOn(on);
}

// The text counts: its place tells one of several that have it, and stands in for it only where
// none has it and that is asked for.
Task<Result> choose(platform::UIValueControl& control, std::string text, const Json& parameters) {
  const auto place = parameters.value("choice", std::size_t{0});
  const std::vector<std::string> choices =
      parameters.contains("choice") ? control.choices() : std::vector<std::string>();
  const bool isPlace = place < choices.size();
  const bool isCalledSo = isPlace && choices[place] == text;
  const bool isMissing = std::ranges::find(choices, text) == choices.end();
  const bool standsIn = isPlace && isMissing && parameters.value("orInPlace", false);
  if (!isCalledSo && !standsIn) {
    co_await control.chooseValue(std::move(text));
    co_return Result();
  }
  co_await control.choosePlace(place);
  co_return standsIn ? Result(Json{{"taken", choices[place]}}) : Result();
}

}  // namespace

Answer find(CallRef call) {
  const Json& parameters = call->parameters();
  const Selector selector(Criteria::from(parameters));
  const bool all = parameters.value("all", true);
  const std::size_t limit = all ? parameters.value("limit", std::size_t{0}) : 1;
  std::vector<UIViewRef> pages;
  const std::vector<Match> matches = selector.find(limit, &pages);
  std::vector<PageNode> nodes;
  if (!pages.empty() && (limit == 0 || matches.size() < limit)) {
    nodes = co_await selector.findIn(std::move(pages), limit == 0 ? 0 : limit - matches.size());
  }
  if (matches.empty() && nodes.empty() && !all) {
    throw SessionError(errors::kNoSuchElement, "nothing on screen is " + selector.inWords());
  }
  co_return answerOf(matches, nodes);
}

Answer describe(CallRef call) {
  Result result;
  if (const PageElement* const element = pageElementIn(call)) {
    result.written.emplace_back("description", co_await descriptionOf(*element));
    co_return result;
  }
  const UIViewRef view = viewIn(call);
  JsonText text;
  text.open('{');
  describeWhole(view, text);
  text.close('}');
  result.written.emplace_back("description", text.take());
  co_return result;
}

Answer locators(CallRef call) {
  Result result;
  if (const PageElement* const element = pageElementIn(call)) {
    result.written.emplace_back("locators", co_await locatorsIn(*element));
    co_return result;
  }
  result.written.emplace_back("locators", written(locatorsOf(viewIn(call))));
  co_return result;
}

Answer picture(CallRef call) {
  UIViewRef view = viewIn(call);
  const platform::UIImageRef image = co_await draw(view);
  Result result;
  result.finish = [image](Json& value) { value = encoded(image); };
  co_return result;
}

Answer click(CallRef call) {
  const Json& parameters = call->parameters();
  requireClick(parameters);
  if (const PageElement* const found = pageElementIn(call)) {
    const PageElement element = *found;
    if (isPlainClick(parameters)) {
      co_await clickIn(element);
    } else {
      co_await pressIn(call, element);
    }
    co_return Result();
  }
  const platform::CGPoint point = co_await readyToPress(handleIn(call), placeIn(parameters));
  requireEnabled(viewIn(call));
  platform::UIWindowRef window = viewIn(call)->window();
  co_await press(call, window, point);
  co_return Result();
}

Answer focus(CallRef call) {
  co_await giveFocus(handleIn(call));
  co_return Result();
}

Answer setText(CallRef call) {
  std::string text = call->parameters()["text"].get<std::string>();
  if (const PageElement* const element = pageElementIn(call)) {
    co_await setTextIn(*element, std::move(text));
    co_return Result();
  }
  UIViewRef view = viewIn(call);
  requireEnabled(view);
  const bool isField =
      view->isKindOfClass(uikit::UITextField) && platform::as<platform::UITextField>(view);
  const bool isEditor = view->isKindOfClass(uikit::UITextView);
  if (!isField && !isEditor) refuse(view, "takes no text");
  co_await turnToWindowOf(view);
  view = viewIn(call);
  if (isField) {
    PlayBackInteractionMethods interaction;
    co_await interaction.performTypeTextOnUIView(view, text);
  } else {
    co_await view->becomeFirstResponder();
    co_await retype(call, std::move(text));
  }
  leaveOutOfRecording(call);
  co_return Result();
}

Answer setValue(CallRef call) {
  requireEnabled(viewIn(call));
  co_await turnToWindowOf(viewIn(call));
  const UIViewRef view = viewIn(call);
  const Json& value = call->parameters()["value"];
  if (view->isKindOfClass(uikit::UISwitch) && platform::as<platform::UISwitch>(view)) {
    if (!value.is_boolean()) {
      throw SessionError(errors::kInvalidArgument, "the value of a switch is true or false");
    }
    co_await setSwitch(view, value.get<bool>());
    co_return Result();
  }
  std::string text = value.is_string() ? value.get<std::string>() : jsonText(value);
  if (const auto control = platform::as<platform::UIValueControl>(view)) {
    Result result = co_await choose(*control, std::move(text), call->parameters());
    leaveOutOfRecording(call);
    co_return result;
  } else if (const auto cell = platform::as<platform::UIItemCell>(view)) {
    co_await cell->setCellValue(std::move(text));
  } else if (view->isKindOfClass(uikit::UITextField)) {
    PlayBackInteractionMethods interaction;
    co_await interaction.performTypeTextOnUIView(view, std::move(text));
    leaveOutOfRecording(call);
  } else {
    refuse(view, "has no value that can be set");
  }
  co_return Result();
}

Answer setExpanded(CallRef call) {
  const UIViewRef view = viewIn(call);
  const auto cell = platform::as<platform::UIItemCell>(view);
  if (!cell || !view->isExpanded()) refuse(view, "cannot be expanded");
  co_await cell->setExpanded(call->parameters()["expanded"].get<bool>());
  co_return Result();
}

Answer scrollIntoView(CallRef call) {
  if (const PageElement* const element = pageElementIn(call)) {
    co_await scrollToIn(*element);
    co_return Result(Json{{"visible", true}});
  }
  UIViewRef view = viewIn(call);
  co_await bringIntoView(view);
  co_return Result(Json{{"visible", placeOf(viewIn(call)).isVisible}});
}

Answer scrollToText(CallRef call) {
  const UIViewRef view = viewIn(call);
  std::string text = call->parameters()["text"].get<std::string>();
  const auto items = platform::as<platform::UIItems>(view);
  if (!items) refuse(view, "is no list, table or tree that can be searched");
  const bool isFound = co_await items->scrollToText(text);
  if (!isFound) throw SessionError(errors::kNoSuchElement, "no item has the text \"" + text + "\"");
  co_return Result();
}

}  // namespace tarni::session::element
