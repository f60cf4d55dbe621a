// A screen of the in-memory UIKit for one test, without an agent running behind it: waits take no
// time, and nothing happens that the test does not do.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "backends/headless/Build.h"
#include "backends/headless/Environment.h"
#include "tests/support/Complete.h"

namespace tarni::test {

class Screen : public testing::Test {
 protected:
  Screen() {
    environment.install();
    environment.useVirtualClock();
    window = environment.makeWindow();
  }

  headless::ViewRef plainView(const platform::CGRect& frame) { return plainView(frame, *window); }
  static headless::ViewRef plainView(const platform::CGRect& frame, headless::View& parent) {
    return headless::build<headless::View>().frame(frame).in(parent);
  }

  headless::Environment& environment = makeEnvironment();
  headless::WindowRef window;

 private:
  // Kept for good, as an environment's threads and timers use parts of it for good.
  static headless::Environment& makeEnvironment() {
    static auto* const kept = new std::vector<std::unique_ptr<headless::Environment>>;
    return *kept->emplace_back(std::make_unique<headless::Environment>());
  }
};

}  // namespace tarni::test
