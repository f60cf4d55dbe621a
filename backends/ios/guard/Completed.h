// completed(): a task that runs its work and ends, without ever being suspended. UIKit does all
// that it is asked for while the caller waits.
//
// Main thread. The work runs when the task is awaited, and what it throws comes out there.
// Coroutines catch what their body throws, so they stand in a C++ file: see GuardedCall.h.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <type_traits>

#include "platform/Task.h"
#include "platform/UIKit/UIApplication.h"
#include "platform/UIKit/UIImage.h"

namespace tarni::ios {

namespace detail {

// For the results of the seam's tasks.
template <typename Result>
platform::Task<Result> run(std::function<Result()> work);

}  // namespace detail

template <typename Work, typename Result = std::invoke_result_t<Work>>
platform::Task<Result> completed(Work work) {
  return detail::run<Result>(std::move(work));
}

}  // namespace tarni::ios
