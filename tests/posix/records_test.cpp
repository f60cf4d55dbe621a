#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "backends/posix/EventRecord.h"
#include "backends/posix/HIDEventRecord.h"
#include "backends/posix/HIDEventSystem.h"
#include "backends/posix/ObjectiveCRuntime.h"
#include "backends/posix/TouchRecord.h"
#include "platform/Foundation/NSException.h"

namespace tarni::test {
namespace {

class RuntimeTest : public testing::Test {
 protected:
  platform::Implementation says(const std::string& text) {
    return [this, text](const std::vector<platform::Argument>&) { trace_ += text; };
  }
  std::string perform(platform::Class cls) {
    trace_.clear();
    runtime_.perform(cls, "act", {});
    return trace_;
  }

  const platform::Class base_ = platform::defineClass("RuntimeTestBase", nullptr);
  const platform::Class derived_ = platform::defineClass("RuntimeTestDerived", base_);
  posix::ObjectiveCRuntime runtime_;
  std::string trace_;
};

TEST_F(RuntimeTest, ReplacingKeepsTheMethodThatWasHandedOut) {
  runtime_.class_replaceMethod(base_, "act", says("old"), "v@:");
  const platform::Method method = runtime_.class_getInstanceMethod(base_, "act");
  runtime_.class_replaceMethod(base_, "act", says("new"), "v@:");
  EXPECT_EQ(runtime_.class_getInstanceMethod(base_, "act"), method);
  EXPECT_EQ(perform(base_), "new");
  EXPECT_EQ(method->selector, "act");
  EXPECT_EQ(method->types, "v@:");
}

TEST_F(RuntimeTest, AnExchangedMethodMayExchangeItselfWhileItRuns) {
  runtime_.class_addMethod(base_, "other", says("other"), "v@:");
  runtime_.class_addMethod(
      base_, "act",
      [this, owned = std::string("still there")](const std::vector<platform::Argument>&) {
        runtime_.method_exchangeImplementations(runtime_.class_getInstanceMethod(base_, "act"),
                                                runtime_.class_getInstanceMethod(base_, "other"));
        runtime_.class_replaceMethod(base_, "other", says("gone"), "v@:");
        trace_ += owned;
      },
      "v@:");
  EXPECT_EQ(perform(base_), "still there");
  EXPECT_EQ(perform(base_), "other");
}

TEST(EventRecordTest, TouchesKeepTheirOrderAndComeOnce) {
  posix::EventRecord event;
  const auto first = std::make_shared<posix::TouchRecord>();
  const auto second = std::make_shared<posix::TouchRecord>();
  second->_setLocationInWindow({7, 8}, true);
  second->setPhase(platform::UITouchPhase::Ended);
  for (const auto& touch : {first, second, first}) event._addTouch(touch, false);
  EXPECT_EQ(event.allTouches(), (std::vector<platform::UITouchRef>{first, second}));
  EXPECT_NE(event.description().find("phase 3 at (7, 8)"), std::string::npos);
  event._clearTouches();
  EXPECT_TRUE(event.allTouches().empty());
}

}  // namespace
}  // namespace tarni::test
