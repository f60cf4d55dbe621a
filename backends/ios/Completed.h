// completed(): a task that runs its work and ends, without ever being suspended. UIKit does all
// that it is asked for while the caller waits.
//
// Main thread. The work runs when the task is awaited, and what it throws comes out there.
// Coroutines catch what their body throws, so they stand in a C++ file: see GuardedCall.h.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/Task.h"
#include "platform/UIKit/UIApplication.h"
#include "platform/UIKit/UIImage.h"

namespace tarni::ios {

platform::Task<void> completed(std::function<void()> work);
platform::Task<std::string> completed(std::function<std::string()> work);
platform::Task<std::optional<std::string>> completed(
    std::function<std::optional<std::string>()> work);
platform::Task<platform::UIImageRef> completed(std::function<platform::UIImageRef()> work);
platform::Task<platform::CFRunLoopRunResult> completed(
    std::function<platform::CFRunLoopRunResult()> work);

}  // namespace tarni::ios
