#include "backends/ios/controls/SegmentedControl.h"

#include "backends/ios/controls/ControlView.h"
#include "backends/ios/controls/Named.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {
namespace {

::UISegmentedControl* asControl(::UIView* view) { return static_cast<::UISegmentedControl*>(view); }

}  // namespace

long numberOfSegmentsIn(::UIView* view) {
  return answered(view, "numberOfSegments",
                  [&] { return static_cast<long>([asControl(view) numberOfSegments]); });
}

// UISegmentedControlNoSegment is -1 as well.
long selectedSegmentIn(::UIView* view) {
  return answered(
      view, "selectedSegmentIndex",
      [&] { return static_cast<long>([asControl(view) selectedSegmentIndex]); }, -1);
}

// UIKit answers an index that does not exist with the title of another segment, or raises.
std::optional<std::string> titleOfSegmentIn(::UIView* view, long index) {
  if (index < 0 || index >= numberOfSegmentsIn(view)) {
    throw platform::NSException(platform::NSRangeException,
                                "there is no segment " + std::to_string(index));
  }
  return toText(answered(view, "titleForSegmentAtIndex:", [&] {
    return [asControl(view) titleForSegmentAtIndex:static_cast<NSUInteger>(index)];
  }));
}

std::shared_ptr<View> makeSegmentedControl(::UIView* view) {
  return makeNamed<Segmented<ControlView>>(view);
}

}  // namespace tarni::ios
