// PickerView: a UIPickerView with one UIPickerColumnView for each component. Main thread.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "backends/headless/views/ScrollView.h"
#include "platform/UIKit/UIItems.h"

namespace tarni::headless {

// A column of texts, of which the one in the middle is selected; a finger turns it.
class PickerColumnView : public ScrollView, public platform::UIValueControl {
 public:
  explicit PickerColumnView(std::vector<std::string> rows);

  long selectedRow() const;
  void selectRow(long row);
  std::string currentValue() const override;
  std::vector<std::string> choices() const override { return rows_; }
  std::optional<std::size_t> chosenPlace() const override;
  platform::Task<void> chooseValue(std::string value) override;
  const std::vector<std::string>& rows() const { return rows_; }

  void drawContent(Canvas& canvas) const override;

 protected:
  void layoutSubviews() override;

 private:
  std::vector<std::string> rows_;
};

class PickerView : public View {
 public:
  explicit PickerView(std::vector<std::vector<std::string>> components);

  const std::vector<std::shared_ptr<PickerColumnView>>& columns() const { return columns_; }

 protected:
  void layoutSubviews() override;

 private:
  std::vector<std::shared_ptr<PickerColumnView>> columns_;
};

}  // namespace tarni::headless
