// SubviewIndex: which subviews of a view lie at a point, while the application is held still
// (UIApplication::holdStill) and many points are asked for. Main thread.
#pragma once

#include <memory>
#include <unordered_map>

#include "platform/QuartzCore/RectIndex.h"

namespace tarni::headless {

class View;

class SubviewIndex {
 public:
  // It is kept as long as somebody holds this.
  static std::shared_ptr<SubviewIndex> hold();
  // Null when nobody holds it.
  static std::shared_ptr<SubviewIndex> held();

  // Where the subviews may be met, by their positions.
  const platform::RectIndex& placesIn(const View& view);

 private:
  struct Known {
    std::size_t count = 0;
    platform::RectIndex places;
  };
  std::unordered_map<const View*, Known> known_;
};

}  // namespace tarni::headless
