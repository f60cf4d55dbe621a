// Headless screens, to be described: mostly the agent's own share, for nothing is as quick to ask
// as a view in memory.
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/Window.h"
#include "bench/Describing.h"
#include "bench/Screens.h"

namespace tarni::bench {
namespace {

using headless::build;
using headless::ViewRef;

ViewRef makeView(long number) {
  const std::string text = std::to_string(number);
  if (number % 4 == 0) return build<headless::Button>("Button " + text).get();
  if (number % 4 == 1) return build<headless::Label>("Label " + text).get();
  return build<headless::View>().get();
}

platform::UIWindowRef show(Shape shape, long count) {
  static headless::WindowRef window;
  if (window) window->setHidden(true);
  window = environment().makeWindow();
  std::vector<ViewRef> views{window};
  for (long number = 0; number < count; ++number) {
    const ViewRef view = makeView(number);
    view->setFrame(placeOf(shape, number, count, window->bounds().size));
    parentOf(shape, number, views)->addSubview(view);
    views.push_back(view);
  }
  return window;
}

const bool kDescribeRegistered = [] {
  measureDescribing({"headless",
                     show,
                     [](platform::Task<void> work) { platform::spawn(std::move(work), nullptr); },
                     {{Shape::Flat, {1000, 10'000, 100'000}},
                      {Shape::Tree, {1000, 10'000, 100'000}},
                      {Shape::Chain, {1000}}}});
  return true;
}();

}  // namespace
}  // namespace tarni::bench
