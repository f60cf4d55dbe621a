// WalkVisibility: KIFAdditions::isVisibleInWindowFrame for the views of one walk. What clips a view
// clips its siblings as well, so it is worked out once a parent and not by a way up the tree for
// each view. Main thread; for one walk.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "agent/elements/ViewWalk.h"
#include "platform/QuartzCore/CGGeometry.h"

namespace tarni {

class WalkVisibility {
 public:
  bool isVisibleInWindowFrame(const WalkStep& step);

 private:
  // What the views between a view and its window do to it.
  struct Surroundings {
    const platform::UIView* parent = nullptr;
    bool isMovedOnly = true;               // none of them is transformed
    platform::CGPoint origin;              // of the parent in window coordinates, when only moved
    std::optional<platform::CGRect> clip;  // in window coordinates; null when none of them clips
  };

  static bool showsNothing(const Surroundings& surroundings);
  static platform::CGRect frameInWindow(const platform::UIViewRef& view, const Surroundings& outer);
  static Surroundings inside(const Surroundings& outer, const platform::UIViewRef& parent);
  static Surroundings above(const platform::UIViewRef& root);
  const Surroundings& surroundingsOf(const WalkStep& step);

  std::vector<Surroundings> levels_;  // along the path of the walk
};

}  // namespace tarni
