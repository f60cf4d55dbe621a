// The agent as it loads itself into an application: fingers become steps on the wire.
#include <gtest/gtest.h>

#include <atomic>
#include <nlohmann/json.hpp>
#include <thread>

#include "tests/ios/uikit/UIKit.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

TEST(Recording, AFingersTapIsAStep) {
  NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
  UIApplicationMake(nil);
  UIWindow* const window = [[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]];
  UIButton* const button = [[UIButton alloc] initWithFrame:NSMakeRect(40, 100, 100, 50)];
  [button setTitle:@"Log in" forState:0];
  [window addSubview:button];
  [window makeKeyAndVisible];

  std::atomic<bool> isConnected = false;
  std::atomic<bool> hasEnded = false;
  std::string step;
  std::jthread host([&] {
    const Wire recorder(kRecorderPort);
    recorder.readMessage();
    isConnected = true;
    step = recorder.readMessage();
    hasEnded = true;
  });
  while (!isConnected) UIRunFor(0.05);
  // Views get their identities from the walk that runs every 0.2 s.
  while (![[button layer] valueForKey:@"TarniUIVIewGuid"]) UIRunFor(0.05);
  UIFingerTap(window, NSMakePoint(60, 125));
  for (int i = 0; i < 200 && !hasEnded; ++i) UIRunFor(0.05);
  host.join();

  const auto steps = nlohmann::json::parse(step);
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_NE(step.find("ClickButton"), std::string::npos) << step;
  EXPECT_NE(step.find("Log in"), std::string::npos) << step;
  [pool release];
}

}  // namespace
}  // namespace tarni::test
