#include <unistd.h>

#include <algorithm>

#include "agent/session/Costs.h"
#include "agent/session/Handlers.h"
#include "platform/Platform.h"

namespace tarni::session::app {
namespace {

// The file that runs; empty where the system does not say.
std::string programPath() {
  char path[4096];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  return {path, static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

}  // namespace

Answer info(CallRef) {
  const platform::Platform& platform = platform::current();
  const platform::CGRect screen = platform.mainScreen->bounds();
  Json names = Json::array();
  for (const Method& method : methods()) names.push_back(method.name);
  co_return Result(Json{{"protocol", 1},
                        {"pid", getpid()},
                        {"program", programPath()},
                        {"toolkit", platform.toolkit},
                        {"version", TARNI_VERSION},
                        {"screen",
                         {{"width", screen.size.width},
                          {"height", screen.size.height},
                          {"scale", platform.mainScreen->scale()}}},
                        {"hasInput", platform.inputDevices != nullptr},
                        {"observesRunLoop", MainWatch::sharedInstance().observes()},
                        {"methods", std::move(names)}});
}

Answer costs(CallRef) {
  co_return Result(costsSinceStart());
}

}  // namespace tarni::session::app
