// LoopWatch: tells the agent's observer when the GUI thread waits for events, in whichever of the
// program's loops, and anybody whether it has done anything. What the thread waits in tells it;
// nothing wakes it for that. GUI thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/UIKit/RunLoopObserver.h"

namespace tarni::qt {

// From now on; null ends it. The observer must live until then.
void watchLoops(platform::RunLoopObserver* observer);

// Grows with each event and each wait of the thread, so with all that it does: what GLib calls by
// itself is not an event, but comes after a wait. Null before the first question on the GUI thread,
// and for good with an event dispatcher of the program's own, which may call what it likes. Any
// thread.
std::optional<std::uint64_t> workCount();

// What the thread is busy with, as the observer will be told when it waits. Any thread.
std::string workSinceWake();

}  // namespace tarni::qt
