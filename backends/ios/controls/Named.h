// makeNamed: a view of a kind, with all that its class's name says that it is beyond that kind: an
// application's own control may be called a switch and answer as one, whatever it derives from.
// Main thread.
#pragma once

#include <concepts>
#include <memory>

#include "backends/ios/controls/ScrollView.h"
#include "backends/ios/controls/SegmentedControl.h"
#include "backends/ios/controls/Switch.h"

namespace tarni::ios {

// Whether the view is called so and also answers as one.
bool isCalledSwitch(::UIView* view);
bool isCalledSegmentedControl(::UIView* view);
bool isCalledScrollView(::UIView* view);

// A kind that is one already stays as it is.
template <typename Kind>
std::shared_ptr<View> makeCalledScrollView(::UIView* view) {
  if constexpr (!std::derived_from<Kind, platform::UIScrollView>) {
    if (isCalledScrollView(view)) return std::make_shared<Scrolling<Kind>>(view);
  }
  return std::make_shared<Kind>(view);
}

template <typename Kind>
std::shared_ptr<View> makeCalledSegmentedControl(::UIView* view) {
  if constexpr (!std::derived_from<Kind, platform::UISegmentedControl>) {
    if (isCalledSegmentedControl(view)) return makeCalledScrollView<Segmented<Kind>>(view);
  }
  return makeCalledScrollView<Kind>(view);
}

template <typename Kind>
std::shared_ptr<View> makeNamed(::UIView* view) {
  if constexpr (!std::derived_from<Kind, platform::UISwitch>) {
    if (isCalledSwitch(view)) return makeCalledSegmentedControl<Switching<Kind>>(view);
  }
  return makeCalledSegmentedControl<Kind>(view);
}

}  // namespace tarni::ios
