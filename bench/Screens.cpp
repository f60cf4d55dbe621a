#include "bench/Screens.h"

#include <atomic>
#include <cstdlib>
#include <new>
#include <vector>

#include "backends/headless/views/Label.h"
#include "backends/headless/views/Switch.h"
#include "backends/headless/views/TextField.h"
#include "backends/headless/views/Window.h"

namespace {
std::atomic<unsigned long> allocationCount{0};
}

void* operator new(std::size_t size) {
  allocationCount.fetch_add(1, std::memory_order_relaxed);
  if (void* memory = std::malloc(size ? size : 1)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace tarni::bench {
namespace {

using headless::build;

std::shared_ptr<headless::View> makeView(long number, const platform::CGRect& frame) {
  const std::string suffix = " " + std::to_string(number);
  switch (number % 4) {
    case 0:
      return build<headless::View>().frame(frame).get();
    case 1:
      return build<headless::Switch>().frame(frame).get();
    case 2:
      return build<headless::TextField>("Field" + suffix).frame(frame).get();
    default:
      return build<headless::Label>("Label" + suffix).frame(frame).get();
  }
}

}  // namespace

headless::Environment& environment() {
  static auto& shared = [&]() -> headless::Environment& {
    auto* const made = new headless::Environment;
    made->install();
    return *made;
  }();
  return shared;
}

platform::UIWindowRef makeScreen(long count) {
  static headless::WindowRef window;
  if (window) window->setHidden(true);
  window = environment().makeWindow();
  std::vector<std::shared_ptr<headless::View>> parents{window};
  std::size_t parent = 0;
  for (long number = 0; number < count; ++number) {
    if (number > 0 && number % 10 == 0) ++parent;
    const double offset = static_cast<double>(number % 10) * 8;
    const auto view = makeView(number, {{offset, offset}, {120, 40}});
    parents[parent]->addSubview(view);
    parents.push_back(view);
  }
  return window;
}

unsigned long allocations() {
  return allocationCount.load(std::memory_order_relaxed);
}

}  // namespace tarni::bench
