#include "samples/headless/HeadlessSample.h"

#include "backends/headless/History.h"
#include "samples/headless/LoginScreen.h"

namespace tarni::samples {
namespace {

constexpr std::size_t kKeptEntries = 100;

}  // namespace

int runHeadlessSample(const std::function<void()>& ready, bool skipsWaits) {
  // Never destroyed: the agent's threads use it until the process is gone.
  static auto& environment = *new headless::Environment;
  environment.install();
  headless::historyCapacity = kKeptEntries;
  if (skipsWaits) environment.useVirtualClock();
  buildLoginScreen(environment);
  if (ready) ready();
  environment.runLoop().run();
  return 0;
}

}  // namespace tarni::samples
