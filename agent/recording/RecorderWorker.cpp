#include "agent/recording/RecorderWorker.h"

#include <algorithm>
#include <thread>

#include "agent/Queue/ElementProcessor.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/elements/Utilities.h"
#include "agent/recording/RecorderAction.h"
#include "agent/recording/TypedText.h"
#include "platform/Platform.h"

namespace tarni {
namespace {

using platform::Task;
using platform::UIViewRef;

constexpr auto kPauseBeforeNextStep = std::chrono::milliseconds(500);
constexpr auto kPauseBetweenLooks = std::chrono::milliseconds(1);

Task<StepDraftRef> draftStep(StepRequest request) {
  const StepDraftRef draft = RecorderAction().describeStep(request);
  co_await RecorderAction::drawStep(draft);
  co_return draft;
}

// A dialog that a tap opened has its first field in hand before the tap is made a step. Nobody
// typed there before the tap: its text waits for the next one.
bool hasAppearedSince(const UIViewRef& field, const std::vector<ElementInfoRef>& bucket) {
  return std::ranges::none_of(bucket, [&field](const ElementInfoRef& info) {
    const ElementInfo::TextFields& there = info->getTextFields();
    return !there || std::ranges::any_of(*there, [&field](const platform::UIViewWeakRef& known) {
      return known.lock() == field;
    });
  });
}

}  // namespace

RecorderWorker& RecorderWorker::sharedInstance() {
  static auto* const shared = new RecorderWorker(ElementsQueue::sharedInstance());
  return *shared;
}

struct RecorderWorker::PendingText {
  bool wasPending = false;
  std::vector<StepDraftRef> drafts;  // empty when nothing was typed
};

// Takes the text field that is being edited out of the shared state, so that its text is recorded
// once, and the texts of those that have gone.
Task<void> RecorderWorker::takePendingText(PendingText* result) {
  TypedText& typed = TypedText::sharedInstance();
  result->drafts = typed.takeGone();
  draftsInHand_ += static_cast<int>(result->drafts.size());
  result->wasPending = !result->drafts.empty();
  const UIViewRef field = GlobalVars::sharedInstance()._editAbleElement();
  if (!field || hasAppearedSince(field, queue_.getElementsBucket())) co_return;
  result->wasPending = true;
  GlobalVars::sharedInstance().set_editAbleElement(nullptr);
  typed.forget();
  platform::NSLog("FOUND EDITABLE COMPONENT");
  platform::NSLog("tYPE text Class Name %s", Utilities::getUIViewClassName(field).c_str());
  const std::string text = RecorderAction::typedText(field);
  if (text.empty()) co_return;
  const StepRequest request{"TypeTextOnEditBox", field, text, {0, 0}};
  result->drafts.push_back(co_await draftStep(request));
  ++draftsInHand_;
}

// Picks the record that counts and drops the others, in one go.
Task<void> RecorderWorker::takeTouch(StepDraftRef* result) {
  const ElementInfoRef info = ElementProcessor().getExactElementInfo(queue_.takeBucket());
  if (!info) co_return;
  const UIViewRef view = info->getUIView();
  const StepDraftRef draft = info->getDraft();
  const UIViewRef refined = draft ? draft->recordedView.lock() : nullptr;
  // The tap may have closed or turned the page, or given the views of a row to another row: what
  // stands there now is not what was touched. A row that stays where it was is told as the tap has
  // left it, as a switch in it is.
  const bool isStillThere =
      draft ? RecorderAction::isShown(refined) && RecorderAction::isInSameRow(refined, *draft)
            : RecorderAction::standsInWindow(view);
  if (isStillThere) {
    const StepRequest request{.action = info->getAction(),
                              .view = view,
                              .data = info->getDatArgs(),
                              .point = info->getTouchedPoint(),
                              .refined = refined};
    *result = co_await draftStep(request);
  } else {
    *result = draft;
  }
  if (*result) ++draftsInHand_;
}

void RecorderWorker::enqueue(const StepDraftRef& draft) {
  RecorderAction::enqueueStep(*draft);
  --draftsInHand_;
}

bool RecorderWorker::run() {
  if (queue_.getElementsBucketSize() == 0) return true;
  return flushTypedText() && recordTouch();
}

bool RecorderWorker::flushTypedText() {
  PendingText pending;
  platform::MainQueue& main = platform::current().dispatch->mainQueue();
  if (!main.syncTask([&] { return takePendingText(&pending); })) return false;
  for (const StepDraftRef& draft : pending.drafts) enqueue(draft);
  if (pending.wasPending) std::this_thread::sleep_for(kPauseBeforeNextStep);
  return true;
}

bool RecorderWorker::recordTouch() {
  StepDraftRef draft;
  platform::MainQueue& main = platform::current().dispatch->mainQueue();
  if (!main.syncTask([&] { return takeTouch(&draft); })) return false;
  if (draft) enqueue(draft);
  return true;
}

void RecorderWorker::finish(std::chrono::steady_clock::time_point deadline) {
  while (draftsInHand_ > 0 && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(kPauseBetweenLooks);
  }
  const ElementInfoRef info = ElementProcessor().getExactElementInfo(queue_.takeBucket());
  if (!info) return;
  for (const StepDraftRef& draft : TypedText::sharedInstance().takeAll()) {
    RecorderAction::enqueueStep(*draft);
  }
  if (info->getDraft()) RecorderAction::enqueueStep(*info->getDraft());
}

}  // namespace tarni
