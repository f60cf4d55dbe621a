// LoopWatch: tells the agent's observer when the GUI thread waits for events, in whichever of the
// program's loops. What the thread waits in tells it; nothing wakes it for that. GUI thread.
#pragma once

#include <string>

#include "platform/UIKit/RunLoopObserver.h"

namespace tarni::qt {

// From now on; null ends it. The observer must live until then.
void watchLoops(platform::RunLoopObserver* observer);

// What the thread is busy with, as the observer will be told when it waits. Any thread.
std::string workSinceWake();

}  // namespace tarni::qt
