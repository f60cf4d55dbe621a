#include "entry/StartAgent.h"

#include <cstdlib>
#include <utility>

#include "agent/WebView/WebView.h"
#include "agent/core/startup/Load.h"
#include "agent/core/startup/RecordControl.h"
#include "platform/Foundation/Guarded.h"

namespace tarni::entry {
namespace {

// Whoever links the agent may have said it already.
void findScripts(const std::string& installed) {
  const char* const address = std::getenv("TARNI_SCRIPTS");
  if (REMOTE_CDN_URL.empty()) REMOTE_CDN_URL = address ? address : installed;
}

bool isStarted = false;

}  // namespace

void startAgent(const platform::Platform& platform, const std::string& scripts) noexcept {
  if (std::exchange(isStarted, true)) return;
  try {
    platform::install(platform);
    findScripts(scripts);
    loadAgent();
  } catch (...) {
    platform::logFailure("The agent cannot start");
  }
}

void endAgent() noexcept {
  if (isStarted) RecordControl::applicationWillTerminate();
}

}  // namespace tarni::entry
