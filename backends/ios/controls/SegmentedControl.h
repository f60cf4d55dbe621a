// Segmented<Kind>: a view of the kind that has segments as well, as UISegmentedControl has and as
// one has that an application calls so. Main thread.
#pragma once

#include <optional>
#include <string>

#include "backends/ios/views/View.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {

// Of a view that answers as one.
long numberOfSegmentsIn(::UIView* view);
long selectedSegmentIn(::UIView* view);
// Throws NSException for an index that does not exist.
std::optional<std::string> titleOfSegmentIn(::UIView* view, long index);

template <typename Kind>
class Segmented : public Kind, public platform::UISegmentedControl {
 public:
  using Kind::Kind;

  long numberOfSegments() const override { return numberOfSegmentsIn(this->native()); }
  long selectedSegmentIndex() const override { return selectedSegmentIn(this->native()); }
  std::optional<std::string> titleForSegmentAtIndex(long index) const override {
    return titleOfSegmentIn(this->native(), index);
  }
};

}  // namespace tarni::ios
