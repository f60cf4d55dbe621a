#include "entry/StartAgent.h"

#include <cstdlib>
#include <exception>

#include "agent/WebView/WebView.h"
#include "agent/core/Load.h"

namespace tarni::entry {
namespace {

// Whoever links the agent may have said it already.
void findScripts() {
  const char* const address = std::getenv("TARNI_SCRIPTS");
  if (address && REMOTE_CDN_URL.empty()) REMOTE_CDN_URL = address;
}

}  // namespace

void startAgent(const platform::Platform& platform) noexcept {
  static bool isStarted = false;
  if (isStarted) return;
  isStarted = true;
  try {
    platform::install(platform);
    findScripts();
    loadAgent();
  } catch (const std::exception& failure) {
    platform::NSLog("The agent cannot start: %s", failure.what());
  } catch (...) {
    platform::NSLog("The agent cannot start");
  }
}

}  // namespace tarni::entry
