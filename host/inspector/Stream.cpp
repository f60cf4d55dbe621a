#include "host/inspector/Stream.h"

#include <algorithm>
#include <utility>

namespace tarni::host {

namespace {

constexpr std::size_t kMostWaiting = std::size_t{128} * 1024 * 1024;

}  // namespace

void Stream::put(Event event) {
  const std::lock_guard lock(mutex_);
  if (isClosed_) return;
  if (!event.replaces.empty()) {
    std::erase_if(events_, [&](const Event& other) {
      const bool isReplaced = other.replaces == event.replaces;
      if (isReplaced) bytes_ -= other.text->size();
      return isReplaced;
    });
  }
  bytes_ += event.text->size();
  events_.push_back(std::move(event));
  isClosed_ = bytes_ > kMostWaiting;
  changed_.notify_one();
}

void Stream::close() {
  const std::lock_guard lock(mutex_);
  isClosed_ = true;
  changed_.notify_one();
}

std::optional<std::string> Stream::next(std::chrono::milliseconds timeout) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, timeout, [this] { return isClosed_ || !events_.empty(); });
  if (events_.empty()) return isClosed_ ? std::nullopt : std::optional<std::string>("");
  const auto event = std::move(events_.front());
  events_.pop_front();
  bytes_ -= event.text->size();
  return *event.text;
}

}  // namespace tarni::host
