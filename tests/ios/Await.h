// await(): the result of a task that ends without being suspended; what it throws is thrown.
// Coroutines stand in a C++ file (backends/ios/guard/GuardedCall.h).
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/Task.h"
#include "platform/UIKit/UIImage.h"

namespace tarni::test {

void await(platform::Task<void> task);
std::optional<std::string> await(platform::Task<std::optional<std::string>> task);
platform::UIImageRef awaitImage(platform::Task<platform::UIImageRef> task);
// The reason of the exception that the task ends with; empty when there is none.
std::string failureOf(platform::Task<void> task);
std::string failureOf(const std::function<void()>& work);

}  // namespace tarni::test
