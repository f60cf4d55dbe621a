// UIApplication(KIFAdditions), the waiting side: the animation speed, the stack of run-loop modes,
// and waits in the run loop. Main thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/UIKit/UIApplication.h"

namespace tarni::KIFAdditions {

// The speed of the key window's layer; 1 when there is no key window. Setting it then does nothing.
float animationSpeed();
// Kept for callers from outside.
void setAnimationSpeed(float speed);

// The modes that the application entered and did not leave yet. Created on first use with the
// default mode.
std::vector<std::string>& KIF_runLoopModes();
// The innermost mode; null once more modes were left than entered.
std::optional<std::string> currentRunLoopMode();

// Follows the application's "pushRunLoopMode:" and "popRunLoopMode:" (with their requester forms),
// so that `currentRunLoopMode` is true to it. Takes effect once a process. The agent itself does
// not call it: to the gestures the current mode is always the default mode.
void swizzleRunLoop();

// Lets the application run in `mode` for `seconds` at normal animation speed: twice as fast an
// application is given half the time. Kept for callers from outside.
platform::Task<platform::CFRunLoopRunResult> KIFRunLoopRunInModeRelativeToAnimationSpeed(
    std::string mode, double seconds, bool returnAfterSourceHandled);

}  // namespace tarni::KIFAdditions
