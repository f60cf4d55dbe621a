// What it costs an event that a client of the session channel has a person's acts told: most events
// are on their way in an act; the press of each act has its element portrayed, with every way to
// find it again tried.
#include <benchmark/benchmark.h>

#include "agent/acts/Acts.h"
#include "agent/session/recording/Steps.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/TextField.h"
#include "bench/RatioReporter.h"
#include "bench/Screens.h"

namespace tarni::bench {
namespace {

constexpr platform::CGPoint kPressedAt{30, 30};

class Recorded {
 public:
  explicit Recorded(bool isOn) {
    if (isOn) acts_.start();
  }
  ~Recorded() { acts_.stop(); }

 private:
  Acts acts_{[](const platform::UIViewRef& view, const auto& place) {
               return session::portraitOf(
                   view, place ? session::ReachedBy::Pointer : session::ReachedBy::Keys);
             },
             [](const Act& act) { benchmark::DoNotOptimize(session::stepOf(act)); }};
};

headless::WindowRef makeForm(long count) {
  const auto window = std::dynamic_pointer_cast<headless::Window>(makeScreen(count));
  headless::build<headless::Button>("Pressed").frame({{0, 0}, {350, 44}}).in(*window);
  return window;
}

void move(benchmark::State& state, bool isRecorded) {
  const headless::WindowRef window = makeForm(100);
  const Recorded recorded(isRecorded);
  headless::Finger& finger = environment().finger();
  finger.down(*window, kPressedAt);
  double offset = 0;
  for (auto _ : state) finger.moveTo({kPressedAt.x + (offset = 1 - offset), kPressedAt.y});
  finger.up();
}

void key(benchmark::State& state, bool isRecorded) {
  const headless::WindowRef window = makeForm(100);
  const auto field = headless::build<headless::TextField>().frame({{0, 50}, {350, 44}}).in(*window);
  const Recorded recorded(isRecorded);
  platform::InputEvent event{platform::InputKind::KeyDown};
  event.window = window;
  event.view = field;
  event.key = event.text = "a";
  event.takesText = true;
  for (auto _ : state) environment().application().showInput(event);
}

// Press and release.
void click(benchmark::State& state, bool isRecorded) {
  const headless::WindowRef window = makeForm(state.range(0));
  const Recorded recorded(isRecorded);
  headless::Finger& finger = environment().finger();
  for (auto _ : state) {
    finger.down(*window, kPressedAt);
    finger.up();
  }
}

void acts_move_bare(benchmark::State& state) {
  move(state, false);
}
void acts_move(benchmark::State& state) {
  move(state, true);
}
void acts_key(benchmark::State& state) {
  key(state, true);
}
void acts_click_bare(benchmark::State& state) {
  click(state, false);
}
void acts_click(benchmark::State& state) {
  click(state, true);
}
BENCHMARK(acts_move_bare);
BENCHMARK(acts_move);
BENCHMARK(acts_key);
BENCHMARK(acts_click_bare)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(acts_click)->Arg(100)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMicrosecond);

const bool kCompared = [] {
  difference({"acts_move", "acts_move_bare", 5e3, "a move of a drag whose steps a client is told",
              "the move"});
  limit({"acts_key", 5e3, 1, "a key of a text that a client is told"});
  difference({"acts_click/100", "acts_click_bare/100", 10e3,
              "press and release whose step a client is told, 100 views", "press and release"});
  difference({"acts_click/1000", "acts_click_bare/1000", 10e3,
              "press and release whose step a client is told, 1,000 views", "press and release"});
  return true;
}();

}  // namespace
}  // namespace tarni::bench
