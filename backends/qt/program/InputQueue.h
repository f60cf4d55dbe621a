// Work in the order of the program's input: behind the keys and touches that wait, and not in a
// loop that holds user input back (a program that is busy and only repaints).
#pragma once

#include <qpa/qwindowsysteminterface_p.h>
#include <functional>
#include <optional>
#include <vector>

#include "platform/Task.h"

namespace tarni::qt {

// Runs `work` on the GUI thread, as the next input. Any thread.
void postInput(std::function<void()> work);

// Who does something: only a person's doing is recorded.
enum class Doer { Agent, Person };

// Runs `work` as input and ends once it has run or has entered a nested loop of the program (a
// modal dialog). What `work` throws before it has done so is thrown again here. GUI thread.
platform::Task<void> performAsInput(std::function<void()> work, Doer doer = Doer::Agent);
// The same of several, with no other work of the program's in between; ends with the last.
platform::Task<void> performAsInput(std::vector<std::function<void()>> works, Doer doer);

// Whose work of `performAsInput` runs, in a nested loop of the program that it has entered as well;
// null while none does. GUI thread.
std::optional<Doer> doerAtWork();

// For who sees every event of the window system. While nobody says that he serves the queue, input
// is posted like other work.
void serveInputQueue(bool isServed);
// Runs the event if it is work; answers whether it was.
bool runInputWork(const QWindowSystemInterfacePrivate::WindowSystemEvent& event);

}  // namespace tarni::qt
