#include "agent/interaction/UIApplication_KIFAdditions_RunLoop.h"

#include <mutex>

#include "agent/core/state/MainThread.h"
#include "agent/interaction/Swizzle.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"

namespace tarni::KIFAdditions {
namespace {

using platform::Argument;

constexpr char KIFRunLoopModesKey = 0;

struct ModeMethod {
  const char* selector;
  const char* replacement;
  const char* types;
  bool pushes;
};

constexpr ModeMethod kModeMethods[] = {
    {"pushRunLoopMode:", "KIF_pushRunLoopMode:", "v@:@", true},
    {"pushRunLoopMode:requester:", "KIF_pushRunLoopMode:requester:", "v@:@@", true},
    {"popRunLoopMode:", "KIF_popRunLoopMode:", "v@:@", false},
    {"popRunLoopMode:requester:", "KIF_popRunLoopMode:requester:", "v@:@@", false},
};

void followMode(const ModeMethod& method, const std::vector<Argument>& arguments) {
  std::vector<std::string>& modes = KIF_runLoopModes();
  if (method.pushes) {
    const auto* mode = arguments.empty() ? nullptr : std::get_if<std::string>(&arguments.front());
    if (mode) modes.push_back(*mode);
  } else if (!modes.empty()) {
    modes.pop_back();
  }
  // After the exchange this is the application's own method.
  platform::current().runtime->perform(platform::uikit::UIApplication, method.replacement,
                                       arguments);
}

}  // namespace

float animationSpeed() {
  const platform::UIWindowRef window = platform::current().application->keyWindow();
  return window ? window->layer().speed() : 1.0F;
}

void setAnimationSpeed(float speed) {
  const platform::UIWindowRef window = platform::current().application->keyWindow();
  if (window) window->layer().setSpeed(speed);
}

std::vector<std::string>& KIF_runLoopModes() {
  assertMainThread();
  using Modes = std::vector<std::string>;
  std::any& held = platform::current().application->associatedObject(&KIFRunLoopModesKey);
  if (!held.has_value()) held = Modes{platform::kCFRunLoopDefaultMode};
  return *std::any_cast<Modes>(&held);
}

std::optional<std::string> currentRunLoopMode() {
  const std::vector<std::string>& modes = KIF_runLoopModes();
  if (modes.empty()) return std::nullopt;
  return modes.back();
}

void swizzleRunLoop() {
  static std::once_flag once;
  std::call_once(once, [] {
    const platform::Class application = platform::uikit::UIApplication;
    for (const ModeMethod& method : kModeMethods) {
      platform::current().runtime->class_addMethod(
          application, method.replacement,
          [&method](const std::vector<Argument>& arguments) { followMode(method, arguments); },
          method.types);
      Swizzle(application, method.selector, method.replacement);
    }
  });
}

platform::Task<platform::CFRunLoopRunResult> KIFRunLoopRunInModeRelativeToAnimationSpeed(
    std::string mode, double seconds, bool returnAfterSourceHandled) {
  const double scaled = seconds / static_cast<double>(animationSpeed());
  co_return co_await platform::current().application->runLoopRunInMode(std::move(mode), scaled,
                                                                       returnAfterSourceHandled);
}

}  // namespace tarni::KIFAdditions
