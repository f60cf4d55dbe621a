// tarni-headless: a login screen in memory with the agent in it, for who writes host tools without
// any screen.
#include "entry/StartAgent.h"
#include "samples/headless/HeadlessSample.h"

int main() {
  return tarni::samples::runHeadlessSample(
      [] { tarni::entry::startAgent(tarni::platform::current()); });
}
