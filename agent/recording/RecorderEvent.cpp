#include "agent/recording/RecorderEvent.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

#include "agent/Queue/ElementsQueue.h"
#include "agent/WebView/WebView.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/core/state/MainThread.h"
#include "agent/diagnostics/Errors.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/Utilities.h"
#include "agent/elements/WebViews.h"
#include "agent/interaction/UIView_KIFAdditions.h"
#include "agent/recording/ElementSpy.h"
#include "agent/recording/RecorderAction.h"
#include "agent/recording/TypedText.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Foundation/Lowercase.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"

namespace tarni {
namespace {

using platform::CGPoint;
using platform::UITouchPhase;
using platform::UITouchRef;
using platform::UIViewRef;
namespace uikit = platform::uikit;

constexpr double kTapThreshold = 10;  // points
constexpr CGPoint kOutsideEveryScreen{-100.0, -200.0};
constexpr auto kPauseAfterTypedText = std::chrono::milliseconds(100);

bool isInSpyMode() {
  return GlobalVars::isTrue(GlobalVars::sharedInstance()._spyMode());
}

// The touches of the agent's own that may still be on the screen.
std::vector<std::weak_ptr<platform::UITouch>>& leftOut() {
  static std::vector<std::weak_ptr<platform::UITouch>> touches;
  return touches;
}

bool isLeftOut(const UITouchRef& touch) {
  return touch &&
         std::ranges::any_of(leftOut(), [&touch](const auto& own) { return own.lock() == touch; });
}

UIViewRef viewOf(const UITouchRef& touch) {
  return touch ? touch->view() : nullptr;
}

CGPoint locationOf(const UITouchRef& touch) {
  return touch ? touch->locationInView(touch->view()) : CGPoint{};
}

// What can have been typed into before a touch on `view`.
std::vector<platform::UIViewWeakRef> textFieldsThereFor(const UIViewRef& view) {
  std::vector<platform::UIViewWeakRef> fields = UIViewsManager().shownTextFields(view->window());
  fields.emplace_back(GlobalVars::sharedInstance()._editAbleElement());
  return fields;
}

// A window beside the key window is not walked, nor is one that has just opened, and taps in it
// count as well.
void identifyViewsBesideKeyWindow(const UIViewRef& touched) {
  const platform::UIWindowRef window = touched ? touched->window() : nullptr;
  if (!window || window == GlobalVars::sharedInstance()._uiWindow()) return;
  UIViewsManager().identifyViews(window);
}

void queueClick(const UIViewRef& view, const platform::UIEvent& event, CGPoint point) {
  const auto info = std::make_shared<ElementInfo>();
  info->addAction("Click");
  info->addEvent(&event);
  info->addUIView(view);
  info->addDataArgs("");
  info->addTouchedPoint(point);
  info->setElementProperties(nullptr);
  if (!ElementsQueue::sharedInstance().addElementInfoInQueue(info)) return;
  info->setDraft(RecorderAction::draftStep({info->getAction(), view, info->getDatArgs(), point}));
  info->setTextFields(textFieldsThereFor(view));
  // The text typed before a tap on another text field is recorded with that tap, at once.
  if (!view->isKindOfClass(uikit::UITextField)) TypedText::sharedInstance().noteTap();
}

// The text of the field edited before, when the user turns to another one.
void recordTypedText(const UIViewRef& tapped, CGPoint point) {
  GlobalVars& shared = GlobalVars::sharedInstance();
  TypedText& typed = TypedText::sharedInstance();
  for (const StepDraftRef& draft : typed.takeGone()) RecorderAction::enqueueStep(*draft);
  const UIViewRef previous = shared._editAbleElement();
  if (!previous) return;
  platform::NSLog("FOUND EDITABLE COMPONENT");
  const std::string text = RecorderAction::typedText(previous);
  if (previous != tapped && !text.empty()) {
    platform::NSLog("tYPE text Class Name %s", Utilities::getUIViewClassName(previous).c_str());
    Diagnostics::spawnLogged(RecorderAction().CreateRecorderAction("TypeTextOnEditBox", previous,
                                                                   text, nullptr, point.x, point.y),
                             "Recording failed");
    typed.forget();
  }
  shared.set_editAbleElement(nullptr);
  std::this_thread::sleep_for(kPauseAfterTypedText);
}

void selectForSpy(const UIViewRef& view, CGPoint touched) {
  if (!view || !ElementSpy().createSpyHierarchy(view, touched)) return;
  // The touch that selected the element must not act on the application.
  const platform::UIWindowRef window = view->window();
  const CGPoint corner = window ? window->frame().origin : CGPoint{};
  const CGPoint outside{kOutsideEveryScreen.x - corner.x, kOutsideEveryScreen.y - corner.y};
  const CGPoint point = platform::convertPoint(outside, window, view);
  Diagnostics::spawnLogged(KIFAdditions::FaketapAtPoint(view, point), "Recording failed");
}

}  // namespace

void RecorderEvent::handleEvent(platform::UIEvent& event) {
  assertMainThread();
  if (GlobalVars::isTrue(GlobalVars::sharedInstance()._isPlaybackStarted())) return;
  if (event.type() != platform::UIEventType::Touches) {
    platform::NSLog("Event has invalid type. Keyboard input?");
    WebView().personActs();
    TypedText::sharedInstance().noteKey();
  } else {
    const UITouchRef touch = event.allTouches().empty() ? nullptr : event.allTouches().front();
    if (isLeftOut(touch)) return;
    WebView().personActs();
    const UIViewRef view = viewOf(touch);
    const std::string className = view ? Utilities::getUIViewClassName(view) : "(null)";
    platform::NSLog("******CLICKED ON UIVIEW %s", className.c_str());
    if (platform::lowercase(className).find("uikeyboard") != std::string::npos) return;
    switch (touch ? touch->phase() : UITouchPhase::Began) {
      case UITouchPhase::Began:
        touchesBeganOnView(touch, event);
        break;
      case UITouchPhase::Moved:
        touchesMovedOnView(touch, event);
        break;
      case UITouchPhase::Ended:
        touchesEndedOnView(touch, event);
        break;
      case UITouchPhase::Stationary:
      case UITouchPhase::Cancelled:
        break;
    }
  }
  // No view ever says that it handled the event, so this line follows every one of them.
  platform::NSLog("No MTReady view to handle this event\n%s", event.description().c_str());
}

void RecorderEvent::leaveOut(const UITouchRef& touch) {
  std::erase_if(leftOut(), [](const auto& own) { return own.expired(); });
  leftOut().emplace_back(touch);
}

void RecorderEvent::touchesBeganOnView(const UITouchRef& touch, platform::UIEvent& event) {
  platform::NSLog("touchesBeganOnView11111111111111");
  const UIViewRef view = viewOf(touch);
  initialTouchPoint_ = locationOf(touch);
  isScrolling_ = false;
  platform::NSLog("Intial Coordinate: x = %f, y = %f", initialTouchPoint_.x, initialTouchPoint_.y);
  identifyViewsBesideKeyWindow(view);
  if (isInSpyMode()) {
    selectForSpy(view, initialTouchPoint_);
  } else if (!IsViewIsNotOfEventType(view)) {
    submitViewForRecording(view, event, initialTouchPoint_.x, initialTouchPoint_.y);
  }
}

void RecorderEvent::touchesMovedOnView(const UITouchRef& touch, platform::UIEvent& /*event*/) {
  platform::NSLog("touchesMovedOnView1111111111111");
  const CGPoint location = locationOf(touch);
  platform::NSLog("Current Coordinate: x = %f, y = %f", location.x, location.y);
  const double dx = location.x - initialTouchPoint_.x;
  const double dy = location.y - initialTouchPoint_.y;
  const double distance = distanceFromInitialTouchPoint(location);
  if (distance <= kTapThreshold) return;
  isScrolling_ = true;
  isVerticalScroll_ = std::abs(dy) > std::abs(dx);
  platform::NSLog(isVerticalScroll_ ? "Scrolling vertically... distance: %f"
                                    : "Scrolling horizontally... distance: %f",
                  distance);
}

void RecorderEvent::touchesEndedOnView(const UITouchRef& touch, platform::UIEvent& event) {
  platform::NSLog("touchesEndedOnView1111111111111");
  const CGPoint location = locationOf(touch);
  const UIViewRef view = viewOf(touch);
  platform::NSLog("End Coordinate: x = %f, y = %f", location.x, location.y);
  if (isInSpyMode()) return;
  if (isScrolling_) {
    platform::NSLog(isVerticalScroll_ ? "Vertical scroll ended. Distance: %f"
                                      : "Horizontal scroll ended. Distance: %f",
                    distanceFromInitialTouchPoint(location));
  } else if (IsViewIsNotOfEventType(view)) {
    submitViewForRecording(view, event, location.x, location.y);
  }
}

bool RecorderEvent::IsViewIsNotOfEventType(const UIViewRef& view) const {
  if (!view) return false;
  if (view->isKindOfClass(uikit::UISwitch)) return true;
  const std::string& className = view->getClass()->lowercaseName();
  return className.find("switch") != std::string::npos ||
         className.find("uisegment") != std::string::npos;
}

void RecorderEvent::submitViewForRecording(const UIViewRef& view, platform::UIEvent& event,
                                           double x, double y) {
  if (!view) return;
  const CGPoint point{x, y};
  if (!isInWebView(view)) WebView().collectStepsBeforeTouch();
  if (!view->isKindOfClass(uikit::UITextField)) {
    queueClick(view, event, point);
    return;
  }
  try {
    queueClick(view, event, point);
    recordTypedText(view, point);
  } catch (...) {
    platform::logFailure("Recording a text field failed");
  }
  GlobalVars::sharedInstance().set_editAbleElement(view);
}

double RecorderEvent::distanceFromInitialTouchPoint(CGPoint point) const {
  return std::hypot(point.x - initialTouchPoint_.x, point.y - initialTouchPoint_.y);
}

}  // namespace tarni
