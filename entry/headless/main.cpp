// tarni-headless: a login screen in memory with the agent in it, for who writes host tools without
// any screen.
//
//   tarni-headless [--skip-waits]     waits of commands take no time
#include <string_view>

#include "entry/StartAgent.h"
#include "samples/headless/HeadlessSample.h"

int main(int count, char** arguments) {
  const bool skipsWaits = count > 1 && std::string_view(arguments[1]) == "--skip-waits";
  return tarni::samples::runHeadlessSample(
      [] { tarni::entry::startAgent(tarni::platform::current()); }, skipsWaits);
}
