// complete(): the result of a task on a platform that completes at once.
#pragma once

#include <exception>
#include <optional>
#include <stdexcept>

#include "platform/Task.h"

namespace tarni::bench {

template <typename T>
platform::Task<void> storeResult(platform::Task<T> task, std::optional<T>* result) {
  result->emplace(co_await task);
}

template <typename T>
T complete(platform::Task<T> task) {
  std::optional<T> result;
  std::exception_ptr thrown;
  platform::spawn(storeResult(std::move(task), &result),
                  [&thrown](const std::exception_ptr& failure) { thrown = failure; });
  if (thrown) std::rethrow_exception(thrown);
  if (!result) throw std::runtime_error("the task did not complete at once");
  return std::move(*result);
}

}  // namespace tarni::bench
