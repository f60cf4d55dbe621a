#include "backends/ios/controls/ControlView.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {
namespace {

class SegmentedControl : public ControlView, public platform::UISegmentedControl {
 public:
  using ControlView::ControlView;

  long numberOfSegments() const override {
    return ask("numberOfSegments",
               [&] { return static_cast<long>([as<::UISegmentedControl>() numberOfSegments]); });
  }

  // UISegmentedControlNoSegment is -1 as well.
  long selectedSegmentIndex() const override {
    return ask(
        "selectedSegmentIndex",
        [&] { return static_cast<long>([as<::UISegmentedControl>() selectedSegmentIndex]); }, -1);
  }

  // UIKit answers an index that does not exist with the title of another segment, or raises.
  std::optional<std::string> titleForSegmentAtIndex(long index) const override {
    if (index < 0 || index >= numberOfSegments()) {
      throw platform::NSException(platform::NSRangeException,
                                  "there is no segment " + std::to_string(index));
    }
    return toText(ask("titleForSegmentAtIndex:", [&] {
      return [as<::UISegmentedControl>() titleForSegmentAtIndex:static_cast<NSUInteger>(index)];
    }));
  }
};

}  // namespace

std::shared_ptr<View> makeSegmentedControl(::UIView* view) {
  return std::make_shared<SegmentedControl>(view);
}

}  // namespace tarni::ios
