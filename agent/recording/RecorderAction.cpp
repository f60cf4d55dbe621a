#include "agent/recording/RecorderAction.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "agent/Queue/ElementsQueue.h"
#include "agent/Queue/RecorderQueue.h"
#include "agent/core/GlobalVars.h"
#include "agent/core/MainThread.h"
#include "agent/elements/UIViewFinder.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/Utilities.h"
#include "agent/elements/XpathManager.h"
#include "platform/Foundation/NSException.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"

namespace tarni {
namespace {

using platform::CGPoint;
using platform::CGRect;
using platform::Task;
using platform::UIViewRef;
namespace uikit = platform::uikit;

bool classNameContains(const UIViewRef& view, std::string_view part) {
  return view->getClass()->lowercaseName().find(part) != std::string::npos;
}

bool takesTouchesWhole(const UIViewRef& view) {
  return view->isKindOfClass(uikit::UIButton) || view->isKindOfClass(uikit::UITextField) ||
         view->isKindOfClass(uikit::UISwitch);
}

// True when the point, in the coordinates of `touched`, lies strictly inside the candidate.
bool isStrictlyInside(const UIViewRef& candidate, const UIViewRef& touched, CGPoint point) {
  const CGPoint center =
      platform::convertPoint(candidate->center(), candidate->superview(), touched);
  const platform::CGSize size = candidate->bounds().size;
  return point.x > center.x - size.width / 2 && point.x < center.x + size.width / 2 &&
         point.y > center.y - size.height / 2 && point.y < center.y + size.height / 2;
}

// The view listed last that contains the point, so that what lies on top wins.
UIViewRef refinedView(const UIViewRef& touched, CGPoint point) {
  if (takesTouchesWhole(touched)) return touched;
  UIViewsManager manager;
  const std::vector<UIViewRef>* candidates = &manager.GetAllViewsForPlayer(touched, true);
  if (candidates->empty()) {
    candidates = &manager.GetAllViewsForPlayer(UIViewFinder().getCurrentWindow(), true);
  }
  const auto last = std::find_if(
      candidates->rbegin(), candidates->rend(),
      [&](const UIViewRef& candidate) { return isStrictlyInside(candidate, touched, point); });
  return last == candidates->rend() ? touched : *last;
}

UIViewRef selectedSegmentView(const UIViewRef& view) {
  platform::NSLog("***FOUND UISEGMENTCONTROL");
  const auto control = platform::as<platform::UISegmentedControl>(view);
  const long index = control ? control->selectedSegmentIndex() : -1;
  const auto segments = view->subviews();
  if (index < 0 || index >= std::ssize(segments)) {
    throw platform::NSException(platform::NSRangeException,
                                "no subview for the selected segment " + std::to_string(index));
  }
  return segments[static_cast<std::size_t>(index)];
}

// The action that the touch leads to, when the switch has yet to follow it.
std::string afterToggle(const std::string& action) {
  if (action == "Mobile_SelectSwitch") return "Mobile_DeSelectSwitch";
  if (action == "Mobile_DeSelectSwitch") return "Mobile_SelectSwitch";
  return action;
}

void addObjectProperties(MainRecorderAction& action, const UIViewRef& view, const std::string& text,
                         long index) {
  const CGRect bounds = view->bounds();
  // Comes first and is filled in when the picture is encoded.
  action.addObjectProperty("ObjectImage", "");
  action.addObjectProperty("className", Utilities::getUIViewClassName(view));
  action.addObjectProperty("id", Utilities::getUIViewAccesibilityId(view));
  action.addObjectProperty("label", Utilities::getUIViewAccesibilityLabel(view));
  action.addObjectProperty("sahiText", text);
  action.addObjectProperty("name", text);
  action.addObjectProperty("mode", "native");
  action.addObjectProperty("index", std::to_string(index));
  if (!text.empty()) {
    action.addObjectProperty("logicalname", RecorderAction().getLogicalNameOfElement(view));
  }
  action.addObjectProperty("xpath:position",
                           XpathManager::sharedInstance().getPositionXpathOfUIView(view));
  action.addObjectProperty("X", Utilities::decimalText(bounds.origin.x, 0));
  action.addObjectProperty("Y", Utilities::decimalText(bounds.origin.y, 0));
  action.addObjectProperty("height", Utilities::decimalText(bounds.size.height, 0));
  action.addObjectProperty("width", Utilities::decimalText(bounds.size.width, 0));
}

// A window has no parent: what is nil is left out or empty, and the size is zero.
void addParentProperties(MainRecorderAction& action, const UIViewRef& parent) {
  const CGRect bounds = parent ? parent->bounds() : CGRect{};
  if (parent) {
    action.addParentProperty("title", Utilities::getUIViewClassName(parent));
    action.addParentProperty("classname", Utilities::getUIViewClassName(parent));
  }
  action.addParentProperty("id", parent ? Utilities::getUIViewAccesibilityId(parent) : "");
  action.addParentProperty("label", parent ? Utilities::getUIViewAccesibilityLabel(parent) : "");
  action.addParentProperty("X", Utilities::decimalText(bounds.origin.x, 0));
  action.addParentProperty("Y", Utilities::decimalText(bounds.origin.y, 0));
  action.addParentProperty("width", Utilities::decimalText(bounds.size.width, 0));
  action.addParentProperty("height", Utilities::decimalText(bounds.size.height, 0));
}

}  // namespace

Task<void> RecorderAction::CreateRecorderAction(std::string action, UIViewRef view,
                                                std::string data,
                                                std::shared_ptr<ElementProperties> /*properties*/,
                                                double x, double y) {
  const StepRequest request{std::move(action), std::move(view), std::move(data), {x, y}};
  const std::shared_ptr<StepDraft> draft = describeStep(request);
  co_await drawStep(draft);
  enqueueStep(*draft);
}

std::shared_ptr<StepDraft> RecorderAction::describeStep(const StepRequest& request) const {
  assertMainThread();
  auto draft = std::make_shared<StepDraft>();
  // 1. and 2. The view under the finger.
  const UIViewRef& touched = request.view;
  UIViewRef recorded = refinedView(touched, request.point);
  // 3. A segmented control is recorded as its selected segment; one that has yet to change, as the
  // segment under the finger.
  if (classNameContains(touched, "segmentedcontrol") && !request.isTouchPending) {
    recorded = selectedSegmentView(touched);
  }
  // 4. A click becomes the action of its kind of view.
  std::string actionName = request.action;
  std::string data = request.data;
  if (actionName == "Click") {
    const MappedActionObject mapped = Utilities::getActionAndDataAccordingToComponent(recorded);
    actionName =
        request.isTouchPending ? afterToggle(mapped.getActionName()) : mapped.getActionName();
    data = mapped.getDataArgs();
  }
  // 5. The step itself.
  draft->recordedView = recorded;
  draft->action.addMainActionProperty("action", actionName);
  draft->action.addMainActionProperty("popupName", "");
  // 6. Inside a web view the page makes the step.
  if (classNameContains(recorded, "uiweb")) {
    draft->isInWebView = true;
    draft->pointInWebView = platform::convertPoint(request.point, touched, recorded);
    return draft;
  }
  // 7. What the host tool is told about the element.
  const bool isSegmentedControl = touched->isKindOfClass(uikit::UISegmentedControl);
  addObjectProperties(draft->action, recorded,
                      Utilities::getUIViewText(isSegmentedControl ? touched : recorded),
                      getClassNameIndexOfUIView(recorded));
  addParentProperties(draft->action, recorded->superview());
  draft->action.addDataArgsProperty("type", "string");
  draft->action.addDataArgsProperty("data", data);
  return draft;
}

Task<void> RecorderAction::drawStep(std::shared_ptr<StepDraft> draft) {
  assertMainThread();
  const UIViewRef view = draft->recordedView.lock();
  if (!view) co_return;
  if (!draft->isInWebView) {
    draft->picture = co_await Utilities::getUIImageOfUIView(view);
    co_return;
  }
  const std::string picture =
      co_await Utilities::getBase64StringOfUIImageOfUIViewTouchedArea(view, draft->pointInWebView);
  if (!picture.empty()) {
    GlobalVars::sharedInstance().set_webViewBase64Image("data:image/jpeg;base64," + picture);
  }
}

void RecorderAction::enqueueStep(const StepDraft& draft) {
  if (draft.isInWebView) return;
  MainRecorderAction action = draft.action;
  action.addObjectProperty("ObjectImage", Utilities::getBase64StringOfUIImage(draft.picture));
  nlohmann::ordered_json steps = nlohmann::ordered_json::array();
  steps.push_back(action.CreateRecorderAction());
  RecorderQueue::get().enqueue(std::move(steps));
}

std::string RecorderAction::typedText(const UIViewRef& view) {
  assertMainThread();
  if (const auto field = platform::as<platform::UITextField>(view)) return field->text();
  const auto textView = platform::as<platform::UITextView>(view);
  return textView ? textView->textViewText().value_or("") : "";
}

std::string RecorderAction::getLogicalNameOfElement(const UIViewRef& view) const {
  const std::string text = Utilities::getUIViewText(view);
  return text.empty() ? Utilities::getUIViewClassName(view) : text;
}

long RecorderAction::getClassNameIndexOfUIView(const UIViewRef& view) const {
  const auto tag = ElementsQueue::getTarniIdOfUIView(view);
  const auto sameClass =
      UIViewFinder().getAllUIViewsAccordingToViewType(Utilities::getUIViewClassName(view));
  const auto found = std::ranges::find_if(sameClass, [&](const UIViewRef& other) {
    return tag && ElementsQueue::getTarniIdOfUIView(other) == tag;
  });
  return found == sameClass.end() ? 0 : found - sameClass.begin();
}

UIViewRef RecorderAction::getActualParentComponent(const UIViewRef& view) const {
  for (UIViewRef current = view; current; current = current->superview()) {
    if (current->isKindOfClass(uikit::UISwitch) || classNameContains(current, "switch")) {
      return current;
    }
  }
  return nullptr;
}

}  // namespace tarni
