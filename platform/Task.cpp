#include "platform/Task.h"

namespace tarni::platform {
namespace {

// A coroutine that owns itself: its frame ends with it.
struct Detached {
  struct promise_type {
    Detached get_return_object() const noexcept { return {}; }
    std::suspend_never initial_suspend() const noexcept { return {}; }
    std::suspend_never final_suspend() const noexcept { return {}; }
    void return_void() const noexcept {}
    void unhandled_exception() const noexcept { std::terminate(); }
  };
};

Detached run(Task<void> work, std::function<void(std::exception_ptr)> ended) {
  std::exception_ptr failure;
  try {
    co_await work;
  } catch (...) {
    failure = std::current_exception();
  }
  if (ended) ended(failure);
}

}  // namespace

void spawn(Task<void> work, std::function<void(std::exception_ptr)> ended) {
  run(std::move(work), std::move(ended));
}

}  // namespace tarni::platform
