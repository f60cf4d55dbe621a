#include <string>

#include "agent/interaction/Swizzle.h"
#include "agent/interaction/UIApplication_KIFAdditions_RunLoop.h"
#include "agent/interaction/UIView_KIFAdditions.h"
#include "tests/support/Screen.h"

namespace tarni {
namespace {

using Arguments = std::vector<platform::Argument>;
using test::complete;

class Swizzling : public test::Screen {
 protected:
  Swizzling() {
    runtime.class_replaceMethod(base, "greet", says("base"), "v@:");
    runtime.class_replaceMethod(derived, "hook", says("hook"), "v@:B");
  }
  platform::Implementation says(const std::string& text) {
    return [this, text](const Arguments&) { said += text + " "; };
  }
  std::string call(platform::Class cls, const char* selector) {
    said.clear();
    runtime.perform(cls, selector, {});
    return said;
  }

  posix::ObjectiveCRuntime& runtime = environment.runtime();
  platform::Class base = platform::defineClass("SwizzleBase", platform::uikit::NSObject);
  platform::Class derived = platform::defineClass("SwizzleDerived", base);
  std::string said;
};

TEST_F(Swizzling, ReachesAnInheritedMethodWithoutTouchingTheSuperclass) {
  Swizzle(derived, "greet", "hook");
  EXPECT_EQ(call(derived, "greet"), "hook ");
  EXPECT_EQ(call(derived, "hook"), "base ");
  EXPECT_EQ(call(base, "greet"), "base ");
  EXPECT_EQ(runtime.class_getInstanceMethod(derived, "greet")->types, "v@:B");
  Swizzle(derived, "greet", "hook");
  EXPECT_EQ(call(derived, "greet"), "base ") << "methods of its own are exchanged";
  EXPECT_EQ(call(derived, "hook"), "hook ");
}

// Takes effect once a process: all that is to be said about it is one story.
TEST_F(Swizzling, RunLoopModesAreFollowedOnceSwizzled) {
  headless::Application& application = environment.application();
  application.pushRunLoopMode("before");
  EXPECT_EQ(KIFAdditions::currentRunLoopMode(), "kCFRunLoopDefaultMode");
  application.popRunLoopMode("before");

  KIFAdditions::swizzleRunLoop();
  KIFAdditions::swizzleRunLoop();
  application.pushRunLoopMode("UITrackingRunLoopMode");
  EXPECT_EQ(KIFAdditions::currentRunLoopMode(), "UITrackingRunLoopMode");
  EXPECT_EQ(application.runLoopModes().back(), "UITrackingRunLoopMode");
  runtime.perform(platform::uikit::UIApplication,
                  "pushRunLoopMode:requester:", {std::string("inner"), std::monostate{}});
  EXPECT_EQ(KIFAdditions::KIF_runLoopModes().size(), 3U);
  EXPECT_EQ(KIFAdditions::currentRunLoopMode(), "inner");

  // The last entry goes, whatever is named.
  application.popRunLoopMode("kCFRunLoopDefaultMode");
  EXPECT_EQ(KIFAdditions::currentRunLoopMode(), "UITrackingRunLoopMode");
  application.popRunLoopMode("UITrackingRunLoopMode");
  application.popRunLoopMode("one too many");
  EXPECT_EQ(KIFAdditions::currentRunLoopMode(), std::nullopt);

  // A gesture then takes the default mode for the current one, and ends.
  const auto view = plainView({{0, 0}, {100, 100}});
  complete(KIFAdditions::dragFromPoint(view, {10, 10}, {20, 20}));
  EXPECT_EQ(application.runLoopRuns().back().mode, "kCFRunLoopDefaultMode");
}

}  // namespace
}  // namespace tarni
