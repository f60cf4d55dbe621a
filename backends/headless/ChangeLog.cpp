#include "backends/headless/ChangeLog.h"

#include <utility>

namespace tarni::headless {
namespace {

// With more than these, who asks looks at everything.
constexpr std::size_t kMost = 1000;

}  // namespace

ChangeLog& ChangeLog::sharedInstance() {
  static auto* const shared = new ChangeLog;
  return *shared;
}

void ChangeLog::noteContent(const platform::UIViewRef& view) {
  if (observer_ && view) observer_->paints(view->window());
  if (hasStructureChanged_ || !view) return;
  const bool isNoted =
      !views_.empty() && !views_.back().owner_before(view) && !view.owner_before(views_.back());
  if (isNoted) return;
  views_.push_back(view);
  if (views_.size() > kMost) noteStructure();
}

void ChangeLog::noteStructure() {
  hasStructureChanged_ = true;
  if (observer_) observer_->paints(nullptr);
}

platform::ViewChanges ChangeLog::take() {
  platform::ViewChanges changes{!std::exchange(hasStructureChanged_, false), {}};
  for (const auto& weak : std::exchange(views_, {})) {
    if (platform::UIViewRef view = weak.lock()) changes.views.push_back(std::move(view));
  }
  return changes;
}

}  // namespace tarni::headless
