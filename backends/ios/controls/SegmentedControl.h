// Segmented<Kind>: a view of the kind that has segments as well, as UISegmentedControl has and as
// one has that an application calls so. Main thread.
#pragma once

#include <string>

#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/View.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {

template <typename Kind>
class Segmented : public Kind, public platform::UISegmentedControl {
 public:
  using Kind::Kind;

  long numberOfSegments() const override {
    return this->ask("numberOfSegments",
                     [&] { return static_cast<long>([control() numberOfSegments]); });
  }

  // UISegmentedControlNoSegment is -1 as well.
  long selectedSegmentIndex() const override {
    return this->ask(
        "selectedSegmentIndex", [&] { return static_cast<long>([control() selectedSegmentIndex]); },
        -1);
  }

  // UIKit answers an index that does not exist with the title of another segment, or raises.
  std::optional<std::string> titleForSegmentAtIndex(long index) const override {
    if (index < 0 || index >= numberOfSegments()) {
      throw platform::NSException(platform::NSRangeException,
                                  "there is no segment " + std::to_string(index));
    }
    return toText(this->ask("titleForSegmentAtIndex:", [&] {
      return [control() titleForSegmentAtIndex:static_cast<NSUInteger>(index)];
    }));
  }

 private:
  ::UISegmentedControl* control() const {
    return static_cast<::UISegmentedControl*>(this->native());
  }
};

}  // namespace tarni::ios
