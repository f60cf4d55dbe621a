// SegmentedControl: a UISegmentedControl with one UISegment, holding a UISegmentLabel, for each
// title. The segments take no touches themselves. Main thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "backends/headless/views/Control.h"
#include "platform/UIKit/UIItems.h"

namespace tarni::headless {

class SegmentedControl : public Control,
                         public platform::UISegmentedControl,
                         public platform::UIValueControl {
 public:
  // A null title is a segment without text.
  explicit SegmentedControl(std::vector<std::optional<std::string>> titles,
                            platform::Class cls = platform::uikit::UISegmentedControl);

  long numberOfSegments() const override { return static_cast<long>(titles_.size()); }
  long selectedSegmentIndex() const override { return selected_; }
  std::optional<std::string> titleForSegmentAtIndex(long index) const override;
  // -1 selects none. Throws NSException (range) for another index that does not exist.
  void select(long index);
  std::string currentValue() const override;
  std::vector<std::string> choices() const override;
  std::optional<std::size_t> chosenPlace() const override;
  platform::Task<void> chooseValue(std::string value) override;
  void onChange(Action action) { addAction(ControlEvent::ValueChanged, std::move(action)); }

  void drawContent(Canvas& canvas) const override;

 protected:
  void tapped(platform::CGPoint point) override;
  void layoutSubviews() override;

 private:
  std::vector<std::optional<std::string>> titles_;
  long selected_ = -1;
};

}  // namespace tarni::headless
