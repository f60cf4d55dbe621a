#include "bench/Describing.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <nlohmann/json.hpp>

#include "agent/AI/AiAPI.h"
#include "agent/core/state/Utilities_Json.h"
#include "agent/elements/UIViewFinder.h"
#include "agent/elements/UIViewMemoryCache.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/XpathManager.h"
#include "agent/recording/RecorderAction.h"
#include "bench/RatioReporter.h"

namespace tarni::bench {
namespace {

using platform::UIViewRef;
using platform::UIWindowRef;

// The pictures of a chain are as many drawings of all of it as it has views, whatever their size.
constexpr platform::CGSize kChain{120, 40};

// What is asked of the window; true when it was answered as it should.
using Question = std::function<bool(const UIWindowRef&)>;

platform::Task<void> describe(std::string type, std::size_t& described) {
  const nlohmann::ordered_json answer = co_await AiAPI().getAllViewsInformation(std::move(type));
  benchmark::DoNotOptimize(Utilities::convertNSArrayToString(answer));
  described = answer.size();
}

std::size_t found(const UIWindowRef& window, const std::string& tag, const std::string& type,
                  const std::string& value) {
  UIViewMemoryCache& cache = UIViewMemoryCache::sharedInstance();
  cache.clearMemoryCache();
  UIViewsManager().findElements(window, tag, type, value);
  return cache.getAllUIViewsIdentifier().size();
}

UIViewRef lastView(const UIWindowRef& window) {
  UIViewsManager manager;
  const auto& views = manager.GetAllViewsForPlayer(window, true);
  return views.empty() ? nullptr : views.back();
}

void ask(benchmark::State& state, const Screens& screens, Shape shape, long count,
         const Question& question) {
  const UIWindowRef window = screens.show(shape, count);
  if (UIViewFinder::getCurrentWindow() != window || !lastView(window)) {
    return state.SkipWithError("the window is not the key window");
  }
  for (auto _ : state) {
    if (!question(window)) return state.SkipWithError("not the answer");
  }
}

const char* nameOf(Shape shape) {
  return shape == Shape::Flat ? "flat" : shape == Shape::Tree ? "tree" : "chain";
}

void measure(const Screens& screens, Shape shape, long count) {
  const auto add = [&](const std::string& what, const Question& question) {
    const std::string name = what + "_" + screens.toolkit + "_" + nameOf(shape);
    benchmark::RegisterBenchmark(
        (name + "/" + std::to_string(count)).c_str(),
        [=](benchmark::State& state) { ask(state, screens, shape, count, question); })
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
  };
  const auto describes = [&screens](const std::string& type) {
    return [finish = screens.finish, type](const UIWindowRef&) {
      std::size_t described = 0;
      finish(describe(type, described));
      return described > 0;
    };
  };
  const auto finds = [](const std::string& type, const std::string& value) {
    return [=](const UIWindowRef& window) { return found(window, "", type, value) > 0; };
  };
  add("describe_all", describes(""));
  add("describe_buttons", describes(screens.button));
  add("find_by_text", finds("text", "Button 0"));
  add("find_by_part", finds("partialtext", "button 0"));
  add("find_by_class", [button = screens.button](const UIWindowRef& window) {
    return found(window, button, "", "") > 0;
  });
  add("find_by_xpath", [](const UIWindowRef& window) {
    const auto path =
        XpathManager::sharedInstance().getPositionXpathOfUIView(window->subviews().front());
    return path && found(window, "", "xpath", *path) == 1;
  });
  // What the recorder does while the program waits.
  add("tap", [](const UIWindowRef& window) {
    StepRequest request{"Click", lastView(window), "", {1, 1}};
    request.isTouchPending = true;
    return !RecorderAction().describeStep(request)->object.empty();
  });
}

std::string grouped(long count) {
  std::string text = std::to_string(count);
  for (auto at = static_cast<long>(text.size()) - 3; at > 0; at -= 3) {
    text.insert(static_cast<std::size_t>(at), ",");
  }
  return text;
}

// Of ten times as many views at most twelve times as long.
void aim(const Screens& screens, Shape shape, long count, const std::string& what,
         const std::string& words) {
  const std::string name = what + "_" + screens.toolkit + "_" + nameOf(shape) + "/";
  compare({name + std::to_string(count), name + std::to_string(count / 10), 12, false,
           words + " " + grouped(count) + " views (" + screens.toolkit + ", " + nameOf(shape) + ")",
           "the same of " + grouped(count / 10)});
}

// A place of its own.
platform::CGRect cell(long number, long count, platform::CGSize window) {
  const auto columns = static_cast<long>(
      std::ceil(std::sqrt(static_cast<double>(count) * window.width / window.height)));
  const long rows = (count + columns - 1) / columns;
  const auto edge = [](long at, long of, double length) {
    return std::floor(length * static_cast<double>(at) / static_cast<double>(of));
  };
  const long column = number % columns;
  const long row = number / columns;
  const double x = edge(column, columns, window.width);
  const double y = edge(row, rows, window.height);
  return {{x, y},
          {edge(column + 1, columns, window.width) - x, edge(row + 1, rows, window.height) - y}};
}

}  // namespace

void measureDescribing(const Screens& screens) {
  for (const auto& [shape, counts] : screens.counts) {
    for (const long count : counts) measure(screens, shape, count);
    if (counts.size() < 2) continue;
    aim(screens, shape, counts.back(), "describe_all", "describe");
    aim(screens, shape, counts.back(), "describe_buttons", "describe the buttons among");
    aim(screens, shape, counts.back(), "find_by_text", "find by text among");
    aim(screens, shape, counts.back(), "tap", "record a tap among");
  }
}

platform::CGRect placeOf(Shape shape, long number, long count, platform::CGSize window) {
  if (shape == Shape::Chain) return {{}, kChain};
  if (shape == Shape::Flat || number < 10) {
    return cell(number, shape == Shape::Flat ? count : 10, window);
  }
  const double offset = static_cast<double>(number % 10);
  return {{offset, offset}, {100, 80}};
}

}  // namespace tarni::bench
