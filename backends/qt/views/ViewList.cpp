#include "backends/qt/views/ViewList.h"

#include <algorithm>

namespace tarni::qt {

std::vector<platform::UIViewRef>& ViewList::spare() {
  static auto* const shared = new std::vector<platform::UIViewRef>;
  return *shared;
}

// The old list goes last, as its views may ask for it when they go.
void ViewList::take(std::vector<platform::UIViewRef>& views) {
  if (std::ranges::equal(views, this->views())) return;
  auto taken = views.empty() ? nullptr : std::make_unique<platform::UIViewRef[]>(views.size());
  std::ranges::move(views, taken.get());
  count_ = static_cast<std::uint32_t>(views.size());
  views_.swap(taken);
}

}  // namespace tarni::qt
