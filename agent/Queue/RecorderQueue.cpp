#include "agent/Queue/RecorderQueue.h"

#include <deque>
#include <mutex>
#include <nlohmann/json.hpp>

namespace tarni {

using nlohmann::ordered_json;

struct RecorderQueue::Items {
  std::mutex mutex;
  std::deque<ordered_json> list;
};

RecorderQueue& RecorderQueue::get() {
  static auto* const shared = new RecorderQueue;
  return *shared;
}

RecorderQueue::RecorderQueue() : items_(std::make_unique<Items>()) {}
RecorderQueue::~RecorderQueue() = default;

void RecorderQueue::enqueue(ordered_json item) {
  const std::lock_guard lock(items_->mutex);
  items_->list.push_back(std::move(item));
}

std::optional<ordered_json> RecorderQueue::dequeue() {
  const std::lock_guard lock(items_->mutex);
  if (items_->list.empty()) return std::nullopt;
  std::optional<ordered_json> head(std::move(items_->list.front()));
  items_->list.pop_front();
  return head;
}

std::size_t RecorderQueue::getLength() const {
  const std::lock_guard lock(items_->mutex);
  return items_->list.size();
}

void RecorderQueue::clearRecorderQueue() {
  const std::lock_guard lock(items_->mutex);
  items_->list.clear();
}

std::vector<ordered_json> RecorderQueue::innerItems() const {
  const std::lock_guard lock(items_->mutex);
  return {items_->list.begin(), items_->list.end()};
}

void RecorderQueue::setInnerItems(std::vector<ordered_json> items) {
  const std::lock_guard lock(items_->mutex);
  items_->list.assign(std::make_move_iterator(items.begin()), std::make_move_iterator(items.end()));
}

}  // namespace tarni
