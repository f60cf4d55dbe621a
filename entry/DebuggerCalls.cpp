// What a developer calls from a debugger in a program that runs; nothing of the agent does. Main
// thread. The answers come into the log; before the agent has started there are none.
#include "agent/RAM/Memory.h"
#include "agent/diagnostics/ViewHierarchy.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace {

void answer(void (*work)()) noexcept {
  if (!tarni::platform::current().application) return;
  tarni::platform::runGuarded("A debugger's call failed", work);
}

}  // namespace

extern "C" [[gnu::visibility("default")]] void tarni_showMemoryAndCpuStats() {
  answer([] { tarni::Memory().showMemoryAndCpuStats(); });
}

extern "C" [[gnu::visibility("default")]] void tarni_printViewHierarchy() {
  answer([] { tarni::Diagnostics::printViewHierarchy(); });
}
