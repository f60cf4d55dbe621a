#include "entry/StartAgent.h"

#include <exception>

#include "agent/core/Load.h"

namespace tarni::entry {

void startAgent(const platform::Platform& platform) noexcept {
  static bool isStarted = false;
  if (isStarted) return;
  isStarted = true;
  try {
    platform::install(platform);
    loadAgent();
  } catch (const std::exception& failure) {
    platform::NSLog("The agent cannot start: %s", failure.what());
  } catch (...) {
    platform::NSLog("The agent cannot start");
  }
}

}  // namespace tarni::entry
