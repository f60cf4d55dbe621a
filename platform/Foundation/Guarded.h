// The boundary at which exceptions end: nothing thrown by a block reaches a thread's top or the
// application's event loop. Any thread.
#pragma once

#include <exception>
#include <functional>
#include <string>

namespace tarni::platform {

// What the failure says of itself, inside a `catch` of the one that is being handled.
std::string reasonOf(const std::exception_ptr& failure = std::current_exception());

// Logs "context: reason" of the failure, inside a `catch` of the one that is being handled. Null is
// not a failure.
void logFailure(const char* context,
                const std::exception_ptr& failure = std::current_exception()) noexcept;

// Runs `block`; what it throws is logged.
void runGuarded(const char* context, const std::function<void()>& block) noexcept;

}  // namespace tarni::platform
