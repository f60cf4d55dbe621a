// OnIos: an application of the double with one key window, in the process of the test, and the
// platform of the backend over it. What is logged is kept.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "backends/ios/views/View.h"
#include "platform/Platform.h"
#import "tests/ios/uikit/Faults.h"
#import "tests/ios/uikit/Record.h"
#import "tests/ios/uikit/UIKit.h"
#include "tests/posix/LineLog.h"

namespace tarni::test {

class OnIos : public testing::Test {
 protected:
  OnIos();
  ~OnIos() override;

  // A view of the kind in the window.
  template <typename Kind>
  Kind* add(Class kind, CGRect frame) {
    return static_cast<Kind*>(addView(kind, frame));
  }
  UIView* addView(Class kind, CGRect frame);

  // Runs a task of the platform's, which ends without being suspended; what it throws is thrown.
  static void run(platform::Task<void> task);
  // The answer of the agent to a playback command.
  static std::string answer(const std::string& command);

  // What was recorded since the last call, one line a call; only lines with one of these starts.
  static std::string record(const std::vector<std::string>& starts = {""});
  static platform::UIViewRef ref(id view) { return ios::viewOf(view); }

  NSAutoreleasePool* const pool_ = [[NSAutoreleasePool alloc] init];
  LineLog& log_;
  UIApplication* const application_;
  UIWindow* const window_;
};

}  // namespace tarni::test
