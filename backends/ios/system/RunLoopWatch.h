// RunLoopWatch: tells the one observer when the main run loop waits and when it goes on. Main
// thread.
#pragma once

#include <string_view>

#include "platform/UIKit/RunLoopObserver.h"

namespace tarni::ios {

// Null takes the observer off.
void watchMainRunLoop(platform::RunLoopObserver* observer);
// What the main thread does now, a constant: what is noted first since it woke is what the observer
// is told, but for the main queue, which goes behind all else.
void noteWork(std::string_view work) noexcept;

}  // namespace tarni::ios
