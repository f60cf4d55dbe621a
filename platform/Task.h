// Task<T>: the coroutine that every operation of the seam returns when the platform may need time.
//
// Who uses it: everybody above the seam. Thread: the main thread, unless a function says otherwise;
// a task is started, suspended and resumed on one and the same thread.
//
// A task is lazy: nothing runs before it is awaited (or handed to `spawn`). On a platform that
// completes at once the whole chain runs through on the caller's stack; on one that cannot, it
// suspends and is resumed from the platform's own event loop. An exception that leaves the body is
// thrown again at the `co_await`.
//
// g++ 12 destroys temporaries of an awaited expression twice when they are aggregates built in
// place: name such arguments before the `co_await`.
#pragma once

#include <coroutine>
#include <exception>
#include <functional>
#include <optional>
#include <utility>

namespace tarni::platform {

template <typename T = void>
class Task;

namespace detail {

// Resumes whoever awaits the task that just ended; nobody, when it was never awaited.
struct FinalAwaiter {
  bool await_ready() const noexcept { return false; }
  template <typename Promise>
  std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> ended) const noexcept {
    const std::coroutine_handle<> next = ended.promise().continuation;
    return next ? next : std::noop_coroutine();
  }
  void await_resume() const noexcept {}
};

struct PromiseBase {
  std::coroutine_handle<> continuation;
  std::exception_ptr failure;

  std::suspend_always initial_suspend() const noexcept { return {}; }
  FinalAwaiter final_suspend() const noexcept { return {}; }
  void unhandled_exception() noexcept { failure = std::current_exception(); }
  void rethrow() const {
    if (failure) std::rethrow_exception(failure);
  }
};

template <typename T>
struct Promise : PromiseBase {
  std::optional<T> value;

  Task<T> get_return_object() noexcept;
  template <typename U>
  void return_value(U&& result) {
    value.emplace(std::forward<U>(result));
  }
  T take() {
    rethrow();
    return std::move(*value);
  }
};

template <>
struct Promise<void> : PromiseBase {
  Task<void> get_return_object() noexcept;
  void return_void() const noexcept {}
  void take() const { rethrow(); }
};

}  // namespace detail

template <typename T>
class [[nodiscard]] Task {
 public:
  using promise_type = detail::Promise<T>;

  explicit Task(std::coroutine_handle<promise_type> coroutine) noexcept : coroutine_(coroutine) {}
  Task(Task&& other) noexcept : coroutine_(std::exchange(other.coroutine_, nullptr)) {}
  Task& operator=(Task&& other) noexcept {
    std::swap(coroutine_, other.coroutine_);
    return *this;
  }
  Task(const Task&) = delete;
  Task& operator=(const Task&) = delete;
  ~Task() {
    if (coroutine_) coroutine_.destroy();
  }

  bool await_ready() const noexcept { return false; }
  std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiting) noexcept {
    coroutine_.promise().continuation = awaiting;
    return coroutine_;
  }
  T await_resume() { return coroutine_.promise().take(); }

 private:
  std::coroutine_handle<promise_type> coroutine_;
};

template <typename T>
Task<T> detail::Promise<T>::get_return_object() noexcept {
  return Task<T>(std::coroutine_handle<Promise<T>>::from_promise(*this));
}

inline Task<void> detail::Promise<void>::get_return_object() noexcept {
  return Task<void>(std::coroutine_handle<Promise<void>>::from_promise(*this));
}

// Starts `work` without anybody awaiting it. `ended` (may be empty) is called once on the thread on
// which the work ended, with null or with the exception that left it.
void spawn(Task<void> work, std::function<void(std::exception_ptr)> ended);

}  // namespace tarni::platform
