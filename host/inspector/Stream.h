// Stream: what one page is yet to be told. A page that reads slowly gets the latest picture of a
// window, not all of them; one that reads nothing is given up. Any thread.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace tarni::host {

class Stream {
 public:
  // JSON, the same for all pages. `replaces` names what it takes the place of while it waits; ""
  // for nothing.
  struct Event {
    std::shared_ptr<const std::string> text;
    std::string replaces = {};
  };

  void put(Event event);
  void close();
  // Waits for so long; "" when nothing came, null when it is closed and empty.
  std::optional<std::string> next(std::chrono::milliseconds timeout);

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Event> events_;
  std::size_t bytes_ = 0;
  bool isClosed_ = false;
};

}  // namespace tarni::host
