#include "agent/Queue/ElementsQueue.h"

#include <utility>

#include "agent/core/state/MainThread.h"
#include "agent/elements/IdentityTag.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni {
namespace {

constexpr double kWorkerInterval = 0.1;  // seconds

}  // namespace

ElementsQueue& ElementsQueue::sharedInstance() {
  static auto* const shared = new ElementsQueue;
  return *shared;
}

std::optional<std::string> ElementsQueue::getTarniIdOfUIView(const platform::UIViewRef& view) {
  assertMainThread();
  const platform::Guid tag = view ? view->layer().tag(kRecordingTag) : platform::Guid();
  return tag ? std::optional(tag.text()) : std::nullopt;
}

bool ElementsQueue::addElementInfoInQueue(ElementInfoRef info) {
  const std::optional<std::string> tag = getTarniIdOfUIView(info->getUIView());
  if (!tag) return false;
  platform::NSLog("UIVIEW TARNI IDENTIFIER %s", tag->c_str());
  const std::lock_guard lock(mutex_);
  if (!identities_.insert(*tag).second) {
    platform::NSLog("********** Already Added TARNI ID GUID %s", tag->c_str());
    return false;
  }
  platform::NSLog("********** Adding New GUID %s", tag->c_str());
  bucket_.push_back(std::move(info));
  return true;
}

std::vector<ElementInfoRef> ElementsQueue::getElementsBucket() const {
  const std::lock_guard lock(mutex_);
  return bucket_;
}

std::size_t ElementsQueue::getElementsBucketSize() const {
  const std::lock_guard lock(mutex_);
  return bucket_.size();
}

void ElementsQueue::clearBucket() {
  takeBucket();
}

std::vector<ElementInfoRef> ElementsQueue::takeBucket() {
  const std::lock_guard lock(mutex_);
  identities_.clear();
  return std::exchange(bucket_, {});
}

void ElementsQueue::setEditAbleElementInfo(ElementInfoRef info) {
  const std::lock_guard lock(mutex_);
  editAbleElementInfo_ = std::move(info);
}

ElementInfoRef ElementsQueue::getEditAbleElementInfo() const {
  const std::lock_guard lock(mutex_);
  return editAbleElementInfo_;
}

void ElementsQueue::startRecorderActionThread() {
  platform::Dispatch& dispatch = *platform::current().dispatch;
  dispatch.after(kWorkerInterval, dispatch.backgroundQueue(), [this] { runWorkerAndRearm(); });
}

void ElementsQueue::runWorkerAndRearm() {
  bool goesOn = true;
  try {
    goesOn = worker_();
  } catch (...) {
    platform::logFailure("Recording worker");
  }
  if (goesOn) startRecorderActionThread();
}

}  // namespace tarni
