#include "agent/Queue/RecorderWorker.h"

#include <chrono>
#include <thread>

#include "agent/Queue/ElementProcessor.h"
#include "agent/core/GlobalVars.h"
#include "agent/elements/Utilities.h"
#include "agent/recording/RecorderAction.h"
#include "platform/Platform.h"

namespace tarni {
namespace {

using platform::Task;
using platform::UIViewRef;
using StepDraftRef = std::shared_ptr<StepDraft>;

constexpr auto pauseAfterTypedText = std::chrono::milliseconds(500);

bool standsInWindow(const UIViewRef& view) {
  const platform::UIWindowRef window = view ? view->window() : nullptr;
  return window && !window->isHidden();
}

Task<StepDraftRef> draftStep(StepRequest request) {
  const StepDraftRef draft = RecorderAction().describeStep(request);
  co_await RecorderAction::drawStep(draft);
  co_return draft;
}

StepDraftRef typedTextDraftOf(const std::vector<ElementInfoRef>& bucket) {
  for (const ElementInfoRef& info : bucket) {
    if (info->getTypedTextDraft()) return info->getTypedTextDraft();
  }
  return nullptr;
}

struct PendingText {
  bool wasPending = false;
  StepDraftRef draft;  // null when nothing was typed
};

// Takes the text field that is being edited out of the shared state, so that its text is recorded
// once.
Task<void> takePendingText(ElementsQueue& queue, PendingText* result) {
  const UIViewRef field = GlobalVars::sharedInstance()._editAbleElement();
  GlobalVars::sharedInstance().set_editAbleElement(nullptr);
  const bool isLive = standsInWindow(field);
  result->draft = isLive ? nullptr : typedTextDraftOf(queue.getElementsBucket());
  result->wasPending = field || result->draft;
  if (!field) co_return;
  platform::NSLog("FOUND EDITABLE COMPONENT");
  platform::NSLog("tYPE text Class Name %s", Utilities::getUIViewClassName(field).c_str());
  if (result->draft) co_return;
  const std::string text = RecorderAction::typedText(field);
  if (text.empty()) co_return;
  const StepRequest request{"TypeTextOnEditBox", field, text, {0, 0}};
  result->draft = co_await draftStep(request);
}

// Picks the record that counts and drops the others, in one go.
Task<void> takeTouch(ElementsQueue& queue, StepDraftRef* result) {
  const ElementInfoRef info = ElementProcessor().getExactElementInfo(queue.takeBucket());
  if (!info) co_return;
  const UIViewRef view = info->getUIView();
  if (!standsInWindow(view)) {
    *result = info->getDraft();
    co_return;
  }
  const StepRequest request{info->getAction(), view, info->getDatArgs(), info->getTouchedPoint()};
  *result = co_await draftStep(request);
}

}  // namespace

bool RecorderWorker::run() {
  if (queue_.getElementsBucketSize() == 0) return true;
  return flushTypedText() && recordTouch();
}

bool RecorderWorker::flushTypedText() {
  PendingText pending;
  platform::MainQueue& main = platform::current().dispatch->mainQueue();
  if (!main.syncTask([&] { return takePendingText(queue_, &pending); })) return false;
  if (pending.draft) RecorderAction::enqueueStep(*pending.draft);
  if (pending.wasPending) std::this_thread::sleep_for(pauseAfterTypedText);
  return true;
}

bool RecorderWorker::recordTouch() {
  StepDraftRef draft;
  platform::MainQueue& main = platform::current().dispatch->mainQueue();
  if (!main.syncTask([&] { return takeTouch(queue_, &draft); })) return false;
  if (draft) RecorderAction::enqueueStep(*draft);
  return true;
}

}  // namespace tarni
