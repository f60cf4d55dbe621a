// UIApplication(KIFAdditions), the event hook: every event that the application dispatches is shown
// to the recorder before the application gets it.
//
// Main thread, inside the application's own event dispatch: nothing thrown leaves it, and the
// application always gets its event.
#pragma once

#include <vector>

#include "platform/ObjectiveC/Class.h"
#include "platform/ObjectiveC/Runtime.h"

namespace tarni::KIFAdditions {

// The load hook: exchanges "sendEvent:" and "mtSendEvent:" when `receiver` is exactly
// UIApplication.
void loadUIApplication(platform::Class receiver);

// The replacement of "sendEvent:"; `arguments` hold the event.
void mtSendEvent(const std::vector<platform::Argument>& arguments) noexcept;

}  // namespace tarni::KIFAdditions
