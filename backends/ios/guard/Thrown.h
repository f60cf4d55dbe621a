// Carries an exception of C++ past what would swallow it or end the process, as RaisedObject.h does
// one of Objective-C. No file catches both. Any thread.
#pragma once

#include <exception>
#include <functional>

namespace tarni::ios {

// What `call` threw; null when it came back.
std::exception_ptr thrownBy(const std::function<void()>& call) noexcept;

}  // namespace tarni::ios
