// makeNamed: a view of a kind, with what its class's name says that it is beyond that kind: an
// application's own control may be called a switch and answer as one, whatever it derives from.
// Main thread.
#pragma once

#include <concepts>
#include <memory>

#include "backends/ios/controls/ScrollView.h"
#include "backends/ios/controls/SegmentedControl.h"
#include "backends/ios/controls/Switch.h"

namespace tarni::ios {

enum class Named { AsItsKind, Switch, SegmentedControl, ScrollView };

// What the view is called, if it also answers as one.
Named namedAs(::UIView* view);

template <typename Kind>
std::shared_ptr<View> makeNamed(::UIView* view) {
  const Named named = namedAs(view);
  if (named == Named::Switch) return std::make_shared<Switching<Kind>>(view);
  if (named == Named::SegmentedControl) return std::make_shared<Segmented<Kind>>(view);
  if constexpr (!std::derived_from<Kind, platform::UIScrollView>) {
    if (named == Named::ScrollView) return std::make_shared<Scrolling<Kind>>(view);
  }
  return std::make_shared<Kind>(view);
}

}  // namespace tarni::ios
