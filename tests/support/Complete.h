// complete(): the result of a task on a platform that does all that it is asked for while the
// caller waits. What the task throws is thrown; one that is suspended is a std::logic_error.
#pragma once

#include <exception>
#include <optional>
#include <stdexcept>
#include <utility>

#include "platform/Task.h"

namespace tarni::test {

inline void complete(platform::Task<void> task) {
  bool hasEnded = false;
  std::exception_ptr failure;
  platform::spawn(std::move(task), [&](const std::exception_ptr& thrown) {
    hasEnded = true;
    failure = thrown;
  });
  if (failure) std::rethrow_exception(failure);
  if (!hasEnded) throw std::logic_error("the task was suspended");
}

template <typename Result>
platform::Task<void> storeResult(platform::Task<Result> task, std::optional<Result>& result) {
  result.emplace(co_await task);
}

template <typename Result>
Result complete(platform::Task<Result> task) {
  std::optional<Result> result;
  complete(storeResult(std::move(task), result));
  return std::move(result).value();
}

}  // namespace tarni::test
