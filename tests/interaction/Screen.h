// A headless application with one window, for tests that touch its views. Waits take no time.
#pragma once

#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <vector>

#include "backends/headless/Build.h"
#include "backends/headless/Environment.h"
#include "platform/Task.h"

namespace tarni::test {

class Screen : public testing::Test {
 protected:
  Screen() {
    environment.useVirtualClock();
    environment.install();
    window = environment.makeWindow();
  }

  // Runs work that headless completes at once. What leaves it is thrown again.
  static void finish(platform::Task<void> work) {
    bool hasEnded = false;
    std::exception_ptr failure;
    platform::spawn(std::move(work), [&](const std::exception_ptr& reason) {
      hasEnded = true;
      failure = reason;
    });
    ASSERT_TRUE(hasEnded);
    if (failure) std::rethrow_exception(failure);
  }

  template <typename Value>
  static Value result(platform::Task<Value> work) {
    Value value{};
    finish(store(std::move(work), &value));
    return value;
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

  template <typename Value>
  static platform::Task<void> store(platform::Task<Value> work, Value* value) {
    *value = co_await work;
  }
};

}  // namespace tarni::test
