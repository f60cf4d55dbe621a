#include <unistd.h>

#include "agent/session/calls/Costs.h"
#include "agent/session/methods/Handlers.h"
#include "platform/Platform.h"
#include "platform/UIKit/UIWindow.h"

namespace tarni::session::app {
namespace {

// Where no window is shown it is not known of windows.
bool isLacking(const Method& method) {
  const platform::Platform& platform = platform::current();
  switch (method.needs) {
    case Needs::Nothing:
      return false;
    case Needs::Mouse:
      return platform.inputDevices == nullptr;
    case Needs::Windows: {
      const platform::UIWindowRef key = platform.application->keyWindow();
      return key && !platform::as<platform::UIWindow>(key);
    }
  }
  return false;
}

}  // namespace

Answer info(CallRef) {
  const platform::Platform& platform = platform::current();
  const platform::CGRect screen = platform.mainScreen->bounds();
  Json names = Json::array();
  Json lacking = Json::array();
  for (const Method& method : methods()) {
    names.push_back(method.name);
    if (isLacking(method)) lacking.push_back(method.name);
  }
  co_return Result(Json{{"protocol", 1},
                        {"pid", getpid()},
                        {"program", platform.processInfo->executablePath()},
                        {"toolkit", platform.toolkit},
                        {"version", TARNI_VERSION},
                        {"screen",
                         {{"width", screen.size.width},
                          {"height", screen.size.height},
                          {"scale", platform.mainScreen->scale()}}},
                        {"hasInput", platform.inputDevices != nullptr},
                        {"methods", std::move(names)},
                        {"lacking", std::move(lacking)}});
}

Answer costs(CallRef) {
  co_return Result(costsSinceStart());
}

}  // namespace tarni::session::app
