// The agent as it loads itself into an application: fingers become steps on the wire.
#include <gtest/gtest.h>

#include <atomic>
#include <nlohmann/json.hpp>
#include <thread>

#include "tests/ios/Await.h"
#include "tests/ios/uikit/UIKit.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

class Recording : public testing::Test {
 protected:
  Recording() {
    UIApplicationMake(nil);
    window_ = [[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]];
    button_ = [[UIButton alloc] initWithFrame:NSMakeRect(40, 100, 100, 50)];
    [button_ setTitle:@"Log in" forState:0];
    [window_ addSubview:button_];
  }
  ~Recording() override { [pool_ release]; }

  // What the host tool gets of a finger's tap on the button; "" when it waits for nothing.
  std::string stepOfTap() {
    [window_ makeKeyAndVisible];
    std::atomic<bool> isConnected = false;
    std::atomic<bool> hasEnded = false;
    std::string step;
    std::jthread host([&] {
      const Wire recorder(kRecorderPort);
      recorder.readMessage();
      isConnected = true;
      failureOf([&] { step = recorder.readMessage(); });
      hasEnded = true;
    });
    while (!isConnected) UIRunFor(0.05);
    // Views get their identities from the walk that runs every 0.2 s.
    while (![[button_ layer] valueForKey:@"TarniUIVIewGuid"]) UIRunFor(0.05);
    UIFingerTap(window_, NSMakePoint(60, 125));
    while (!hasEnded) UIRunFor(0.05);
    host.join();
    return step;
  }

  static void expectTheStep(const std::string& step) {
    const auto steps = nlohmann::json::parse(step, nullptr, false);
    ASSERT_EQ(steps.size(), 1U) << step;
    EXPECT_NE(step.find("ClickButton"), std::string::npos) << step;
    EXPECT_NE(step.find("Log in"), std::string::npos) << step;
  }

  NSAutoreleasePool* const pool_ = [[NSAutoreleasePool alloc] init];
  UIWindow* window_;
  UIButton* button_;
};

TEST_F(Recording, AFingersTapIsAStep) { expectTheStep(stepOfTap()); }

TEST_F(Recording, ATapOnWhatAnApplicationHasPutOverAPageIsAStep) {
  WKWebView* const webView = [[WKWebView alloc] initWithFrame:[window_ bounds]];
  [window_ addSubview:webView];
  [[[webView subviews] lastObject] addSubview:button_];
  expectTheStep(stepOfTap());
}

}  // namespace
}  // namespace tarni::test
