// A headless application with one window, for tests that touch its views. Waits take no time.
#pragma once

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
    environment.useVirtualClock();
    environment.install();
    window = environment.makeWindow();
  }

  headless::ViewRef plainView(const platform::CGRect& frame) {
    return headless::build<headless::View>().frame(frame).in(*window);
  }

  headless::Environment& environment = makeEnvironment();
  std::shared_ptr<headless::Window> window;

 private:
  // Never destroyed: timers that the agent started may outlive the test.
  static headless::Environment& makeEnvironment() {
    static auto* const all = new std::vector<headless::Environment*>;
    return *all->emplace_back(new headless::Environment);
  }
};

}  // namespace tarni::test
