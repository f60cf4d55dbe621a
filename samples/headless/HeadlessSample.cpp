#include "samples/headless/HeadlessSample.h"

#include "samples/headless/LoginScreen.h"

namespace tarni::samples {

int runHeadlessSample(const std::function<void()>& ready) {
  // Never destroyed: the agent's threads use it until the process is gone.
  static auto& environment = *new headless::Environment;
  environment.install();
  buildLoginScreen(environment);
  if (ready) ready();
  environment.runLoop().run();
  return 0;
}

}  // namespace tarni::samples
