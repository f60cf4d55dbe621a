#include "agent/recording/RecorderAction.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "agent/Queue/RecorderQueue.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/core/state/MainThread.h"
#include "agent/core/state/Utilities_Text.h"
#include "agent/elements/IdentityTag.h"
#include "agent/elements/UIViewFinder.h"
#include "agent/elements/UIView_KIFAdditions_Visibility.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/Utilities.h"
#include "agent/elements/Utilities_Images.h"
#include "agent/elements/WebViews.h"
#include "agent/elements/XpathManager.h"
#include "agent/recording/MainRecorderAction.h"
#include "agent/recording/TouchedView.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Foundation/NSException.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"
#include "platform/UIKit/UIItems.h"

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

// The window that was touched is the one that counts for the tap, whether or not it has become the
// key window already.
platform::UIWindowRef windowOf(const UIViewRef& touched) {
  const platform::UIWindowRef window = touched->window();
  return window ? window : UIViewFinder::getCurrentWindow();
}

UIViewRef refinedView(const UIViewRef& touched, CGPoint point) {
  if (takesTouchesWhole(touched)) return touched;
  const std::shared_ptr<void> still = platform::current().application->holdStill();
  UIViewsManager manager;
  const std::vector<UIViewRef>* candidates = &manager.GetAllViewsForPlayer(touched, true);
  if (candidates->empty()) {
    candidates = &manager.GetAllViewsForPlayer(windowOf(touched), true);
  }
  const UIViewRef foremost = foremostAt(*candidates, touched, point);
  return foremost ? foremost : touched;
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

// A segmented control is recorded as its selected segment; one that has yet to change, as the
// segment under the finger.
UIViewRef recordedViewOf(const StepRequest& request) {
  const UIViewRef& touched = request.view;
  UIViewRef recorded = request.refined ? request.refined : refinedView(touched, request.point);
  const bool hasChanged = classNameContains(touched, "segmentedcontrol") && !request.isTouchPending;
  return hasChanged ? selectedSegmentView(touched) : recorded;
}

// The action that the touch leads to, when the switch has yet to follow it.
std::string afterToggle(const std::string& action) {
  if (action == "Mobile_SelectSwitch") return "Mobile_DeSelectSwitch";
  if (action == "Mobile_DeSelectSwitch") return "Mobile_SelectSwitch";
  return action;
}

// A click becomes the action of its kind of view.
void describeAction(const StepRequest& request, const UIViewRef& recorded, StepDraft& draft) {
  draft.actionName = request.action;
  draft.data = request.data;
  if (request.action != "Click") return;
  const MappedActionObject mapped = request.isTouchPending
                                        ? Utilities::mappedAction(recorded)
                                        : Utilities::getActionAndDataAccordingToComponent(recorded);
  draft.actionName =
      request.isTouchPending ? afterToggle(mapped.getActionName()) : mapped.getActionName();
  draft.data = mapped.getDataArgs();
}

StepDraft::Properties objectProperties(const UIViewRef& view, const std::string& text, long index) {
  const CGRect bounds = view->bounds();
  const auto logicalName =
      text.empty() ? std::nullopt : std::optional(RecorderAction().getLogicalNameOfElement(view));
  return {{"className", Utilities::getUIViewClassName(view)},
          {"id", Utilities::getUIViewAccesibilityId(view)},
          {"label", Utilities::getUIViewAccesibilityLabel(view)},
          {"sahiText", text},
          {"name", text},
          {"mode", "native"},
          {"index", std::to_string(index)},
          {"logicalname", logicalName},
          {"xpath:position", XpathManager::sharedInstance().getPositionXpathOfUIView(view)},
          {"X", Utilities::decimalText(bounds.origin.x, 0)},
          {"Y", Utilities::decimalText(bounds.origin.y, 0)},
          {"height", Utilities::decimalText(bounds.size.height, 0)},
          {"width", Utilities::decimalText(bounds.size.width, 0)}};
}

// A window has no parent: what is nil is left out or empty, and the size is zero.
StepDraft::Properties parentProperties(const UIViewRef& parent) {
  const CGRect bounds = parent ? parent->bounds() : CGRect{};
  const auto className =
      parent ? std::optional(Utilities::getUIViewClassName(parent)) : std::nullopt;
  return {{"title", className},
          {"classname", className},
          {"id", parent ? Utilities::getUIViewAccesibilityId(parent) : ""},
          {"label", parent ? Utilities::getUIViewAccesibilityLabel(parent) : ""},
          {"X", Utilities::decimalText(bounds.origin.x, 0)},
          {"Y", Utilities::decimalText(bounds.origin.y, 0)},
          {"width", Utilities::decimalText(bounds.size.width, 0)},
          {"height", Utilities::decimalText(bounds.size.height, 0)}};
}

Task<void> draw(StepDraftRef draft) {
  const UIViewRef view = draft->recordedView.lock();
  if (!view) co_return;
  if (!draft->isInWebView) {
    draft->picture = co_await Utilities::getUIImageOfUIView(view);
    co_return;
  }
  // A drawing that fails leaves none, not that of the touch before.
  GlobalVars& shared = GlobalVars::sharedInstance();
  shared.set_webViewBase64Image(std::nullopt);
  const std::string picture =
      co_await Utilities::getBase64StringOfUIImageOfUIViewTouchedArea(view, draft->pointInWebView);
  if (!picture.empty()) shared.set_webViewBase64Image("data:image/jpeg;base64," + picture);
}

std::string encodedPicture(const StepDraft& draft) {
  try {
    return Utilities::getBase64StringOfUIImage(draft.picture);
  } catch (...) {
    platform::logFailure("Encoding the picture of a step failed");
    return {};
  }
}

std::optional<StepDraft::Row> rowOf(const UIViewRef& view) {
  for (UIViewRef at = view; at; at = at->superview()) {
    const bool isRow =
        at->isKindOfClass(uikit::UITableViewCell) || at->isKindOfClass(uikit::UICollectionViewCell);
    if (!isRow) continue;
    StepDraft::Row row{std::nullopt, Utilities::getUIViewText(at)};
    if (const auto cell = platform::as<platform::UIItemCell>(at)) {
      const platform::ItemPlace place = cell->place();
      row.place.emplace(place.row, place.column);
    }
    return row;
  }
  return std::nullopt;
}

// The text that stood in a view when it was said not to be a person's.
constexpr std::string_view kLeftOutText = "TarniLeftOutText";

std::string textIn(const UIViewRef& view) {
  if (const auto field = platform::as<platform::UITextField>(view)) return field->text();
  const auto textView = platform::as<platform::UITextView>(view);
  return textView ? textView->textViewText().value_or("") : "";
}

}  // namespace

Task<void> RecorderAction::CreateRecorderAction(std::string action, UIViewRef view,
                                                std::string data,
                                                std::shared_ptr<ElementProperties> /*properties*/,
                                                double x, double y) {
  const StepRequest request{std::move(action), std::move(view), std::move(data), {x, y}};
  const StepDraftRef draft = describeStep(request);
  co_await drawStep(draft);
  enqueueStep(*draft);
}

StepDraftRef RecorderAction::describeStep(const StepRequest& request) const {
  assertMainThread();
  auto draft = std::make_shared<StepDraft>();
  const UIViewRef& touched = request.view;
  const UIViewRef recorded = recordedViewOf(request);
  describeAction(request, recorded, *draft);
  draft->recordedView = recorded;
  draft->row = rowOf(recorded);
  // Inside a web view the page makes the step.
  if (isInWebView(recorded)) {
    draft->isInWebView = true;
    draft->pointInWebView = platform::convertPoint(request.point, touched, recorded);
    return draft;
  }
  const bool isSegmentedControl = touched->isKindOfClass(uikit::UISegmentedControl);
  draft->object =
      objectProperties(recorded, Utilities::getUIViewText(isSegmentedControl ? touched : recorded),
                       getClassNameIndexOfUIView(recorded));
  draft->parent = parentProperties(recorded->superview());
  return draft;
}

Task<void> RecorderAction::drawStep(StepDraftRef draft) {
  assertMainThread();
  try {
    co_await draw(std::move(draft));
  } catch (...) {
    platform::logFailure("Drawing a step failed");
  }
}

void RecorderAction::enqueueStep(const StepDraft& draft) {
  MainRecorderAction action;
  if (draft.isInWebView) return;
  action.addMainActionProperty("action", draft.actionName);
  action.addMainActionProperty("popupName", "");
  action.addObjectProperty("ObjectImage", encodedPicture(draft));
  for (const auto& [key, value] : draft.object) action.addObjectProperty(key, value);
  for (const auto& [key, value] : draft.parent) action.addParentProperty(key, value);
  action.addDataArgsProperty("type", "string");
  action.addDataArgsProperty("data", draft.data);
  nlohmann::ordered_json steps = nlohmann::ordered_json::array();
  steps.push_back(action.CreateRecorderAction());
  RecorderQueue::get().enqueue(std::move(steps));
}

StepDraftRef RecorderAction::draftStep(StepRequest request) {
  request.isTouchPending = true;
  try {
    StepDraftRef draft = RecorderAction().describeStep(request);
    if (draft->isInWebView) return nullptr;
    platform::spawn(drawStep(draft), nullptr);
    return draft;
  } catch (...) {
    platform::logFailure("Drafting a step failed");
    return nullptr;
  }
}

bool RecorderAction::standsInWindow(const UIViewRef& view) {
  assertMainThread();
  const platform::UIWindowRef window = view ? view->window() : nullptr;
  return window && !window->isHidden();
}

bool RecorderAction::isShown(const UIViewRef& view) {
  return standsInWindow(view) && KIFAdditions::isVisibleInViewHierarchy(view);
}

bool RecorderAction::isInSameRow(const UIViewRef& view, const StepDraft& draft) {
  assertMainThread();
  const auto row = rowOf(view);
  if (!row || !draft.row) return !row && !draft.row;
  // What a row says may change with the tap.
  return row->place ? row->place == draft.row->place : row->text == draft.row->text;
}

std::string RecorderAction::typedText(const UIViewRef& view) {
  assertMainThread();
  std::string text = textIn(view);
  const std::string* const leftOut = view->layer().valueForKey(kLeftOutText);
  if (!leftOut || leftOut->empty()) return text;
  if (*leftOut == text) return "";
  // A person has been there: the same text again is theirs.
  view->layer().setValueForKey("", kLeftOutText);
  return text;
}

void RecorderAction::leaveOutTextOf(const UIViewRef& view) {
  assertMainThread();
  view->layer().setValueForKey(textIn(view), kLeftOutText);
}

std::string RecorderAction::getLogicalNameOfElement(const UIViewRef& view) const {
  const std::string text = Utilities::getUIViewText(view);
  return text.empty() ? Utilities::getUIViewClassName(view) : text;
}

long RecorderAction::getClassNameIndexOfUIView(const UIViewRef& view) const {
  const platform::Guid tag = view->layer().tag(kRecordingTag);
  const auto sameClass =
      UIViewsManager().viewsForPlayerOfType(windowOf(view), Utilities::getUIViewClassName(view));
  const auto found = std::ranges::find_if(sameClass, [tag](const UIViewRef& other) {
    return tag && other->layer().tag(kRecordingTag) == tag;
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
