// The boundary at which exceptions end: nothing thrown by a block reaches a thread's top or the
// application's event loop.
#pragma once

#include <exception>
#include <functional>

namespace tarni::platform {

// Logs `failure` as what went wrong in `place`. Null is no failure.
void logFailure(const char* place, const std::exception_ptr& failure) noexcept;

// Runs `block`; what it throws is logged.
void runGuarded(const char* place, const std::function<void()>& block) noexcept;

}  // namespace tarni::platform
