// What the agent adds to each event that an application dispatches, and to a tap that is recorded.
#include <benchmark/benchmark.h>

#include <nlohmann/json.hpp>

#include "agent/Queue/ElementsQueue.h"
#include "agent/Queue/RecorderQueue.h"
#include "agent/core/startup/UIApplication_KIFAdditions_EventHook.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/Utilities_Images.h"
#include "agent/recording/RecorderAction.h"
#include "backends/headless/views/Button.h"
#include "bench/RatioReporter.h"
#include "bench/Screens.h"
#include "platform/UIKit/Classes.h"
#include "tests/support/Complete.h"

namespace tarni::bench {
namespace {

constexpr platform::CGPoint kTapped{30, 30};

headless::WindowRef makeTaggedScreen(long count) {
  const auto window = std::dynamic_pointer_cast<headless::Window>(makeScreen(count));
  headless::build<headless::Button>("Tapped").frame({{0, 0}, {350, 44}}).in(*window);
  UIViewsManager manager;
  manager.GetAllViews(window, true);
  return window;
}

void moveFinger(benchmark::State& state) {
  const headless::WindowRef window = makeTaggedScreen(100);
  headless::Finger& finger = environment().finger();
  finger.down(*window, kTapped);
  double offset = 0;
  for (auto _ : state) finger.moveTo({kTapped.x + (offset = 1 - offset), kTapped.y});
  finger.up();
}

// Registered first, and so run before the agent's hook is installed.
void event_bare(benchmark::State& state) {
  moveFinger(state);
}
BENCHMARK(event_bare);

void event_recorded(benchmark::State& state) {
  static const bool hooked = [] {
    KIFAdditions::loadUIApplication(platform::uikit::UIApplication);
    return true;
  }();
  benchmark::DoNotOptimize(hooked);
  moveFinger(state);
}
BENCHMARK(event_recorded);

void tap_recorded(benchmark::State& state) {
  const headless::WindowRef window = makeTaggedScreen(state.range(0));
  headless::Finger& finger = environment().finger();
  for (auto _ : state) {
    finger.down(*window, kTapped);
    finger.up();
    ElementsQueue::sharedInstance().clearBucket();
  }
}
BENCHMARK(tap_recorded)->Arg(1000)->Unit(benchmark::kMicrosecond);

platform::UIViewRef recordedView(const headless::WindowRef& window) {
  return window->hitTest(kTapped);
}

void step_snapshot_alone(benchmark::State& state) {
  const platform::UIViewRef view = recordedView(makeTaggedScreen(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(test::complete(Utilities::getBase64StringOfUIImageOfUIView(view)));
  }
}
BENCHMARK(step_snapshot_alone)->Arg(1000)->Unit(benchmark::kMicrosecond);

void step_built(benchmark::State& state) {
  const platform::UIViewRef view = recordedView(makeTaggedScreen(state.range(0)));
  for (auto _ : state) {
    const StepRequest request{"Click", view, "", {5, 5}};
    const auto draft = RecorderAction().describeStep(request);
    platform::spawn(RecorderAction::drawStep(draft), {});
    RecorderAction::enqueueStep(*draft);
    benchmark::DoNotOptimize(RecorderQueue::get().dequeue());  // as the sender does
  }
}
BENCHMARK(step_built)->Arg(1000)->Unit(benchmark::kMicrosecond);

const bool kEventsRegistered = [] {
  difference({"event_recorded", "event_bare", 10e3, "an event of a program that is recorded",
              "the same event without the agent"});
  limit({"tap_recorded/1000", 20e6, 1, "a recorded tap, on the main thread (1,000 views)"});
  compare({"step_built/1000", "step_snapshot_alone/1000", 1.3, false,
           "build a recorded step (1,000 views)", "its picture alone"});
  return true;
}();

}  // namespace
}  // namespace tarni::bench
