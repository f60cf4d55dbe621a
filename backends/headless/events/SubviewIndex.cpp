#include "backends/headless/events/SubviewIndex.h"

#include <vector>

#include "backends/headless/View.h"

namespace tarni::headless {
namespace {

std::weak_ptr<SubviewIndex>& shared() {
  static auto* const index = new std::weak_ptr<SubviewIndex>;
  return *index;
}

// A hair wider than the view: turning it back and forth rounds.
platform::CGRect reachOf(const View& view) {
  constexpr double kHair = 1e-6;
  const platform::CGRect frame = view.frame();
  return {{frame.minX() - kHair, frame.minY() - kHair},
          {frame.size.width + 2 * kHair, frame.size.height + 2 * kHair}};
}

}  // namespace

std::shared_ptr<SubviewIndex> SubviewIndex::hold() {
  std::shared_ptr<SubviewIndex> index = held();
  if (!index) shared() = index = std::make_shared<SubviewIndex>();
  return index;
}

std::shared_ptr<SubviewIndex> SubviewIndex::held() {
  return shared().lock();
}

const platform::RectIndex& SubviewIndex::placesIn(const View& view) {
  Known& known = known_[&view];
  if (known.count == view.subviews().size()) return known.places;
  std::vector<platform::CGRect> reaches;
  for (std::size_t at = 0; at < view.subviews().size(); ++at) {
    reaches.push_back(reachOf(view.child(at)));
  }
  known.count = reaches.size();
  known.places = platform::RectIndex(std::move(reaches));
  return known.places;
}

}  // namespace tarni::headless
