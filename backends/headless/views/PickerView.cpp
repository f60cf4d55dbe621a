#include "backends/headless/views/PickerView.h"

#include <algorithm>
#include <cmath>

#include "backends/headless/drawing/Canvas.h"
#include "backends/headless/views/Refusal.h"

namespace tarni::headless {
namespace {

constexpr double kRowHeight = 32;  // points

platform::Class columnClass() {
  return platform::defineClass("UIPickerColumnView", platform::uikit::UIView);
}

}  // namespace

PickerColumnView::PickerColumnView(std::vector<std::string> rows)
    : ScrollView(columnClass()), rows_(std::move(rows)) {}

long PickerColumnView::selectedRow() const {
  if (rows_.empty()) return -1;
  const auto row = static_cast<long>(std::lround(contentOffset().y / kRowHeight));
  return std::clamp(row, 0L, static_cast<long>(rows_.size()) - 1);
}

void PickerColumnView::selectRow(long row) {
  scrollTo({0, kRowHeight * static_cast<double>(row)});
}

std::string PickerColumnView::currentValue() const {
  const long row = selectedRow();
  return row < 0 ? std::string() : rows_[static_cast<std::size_t>(row)];
}

std::optional<std::size_t> PickerColumnView::chosenPlace() const {
  const long row = selectedRow();
  return row < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(row));
}

platform::Task<void> PickerColumnView::chooseValue(std::string value) {
  const auto row = std::ranges::find(rows_, value);
  if (row == rows_.end()) refuseValue(value, rows_);
  selectRow(row - rows_.begin());
  co_return;
}

// Every row can come to the middle.
void PickerColumnView::layoutSubviews() {
  const double turns = kRowHeight * (static_cast<double>(rows_.size()) - 1);
  setContentSize({bounds().size.width, bounds().size.height + std::max(0.0, turns)});
}

void PickerColumnView::drawContent(Canvas& canvas) const {
  const platform::CGRect own = bounds();
  const double middle = own.size.height / 2 - kRowHeight / 2;
  const long selected = selectedRow();
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    const bool isSelected = static_cast<long>(row) == selected;
    canvas.text(rows_[row],
                {{own.minX(), middle + kRowHeight * static_cast<double>(row)},
                 {own.size.width, kRowHeight}},
                {.size = 20,
                 .color = isSelected ? colors::kBlack : colors::kGray,
                 .alignment = TextAlignment::Center});
  }
}

PickerView::PickerView(std::vector<std::vector<std::string>> components)
    : View(platform::uikit::UIPickerView) {
  for (auto& rows : components) {
    columns_.push_back(std::make_shared<PickerColumnView>(std::move(rows)));
    addSubview(columns_.back());
  }
}

void PickerView::layoutSubviews() {
  const platform::CGSize size = bounds().size;
  const double width = size.width / static_cast<double>(std::max<std::size_t>(columns_.size(), 1));
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    columns_[index]->setFrame({{width * static_cast<double>(index), 0}, {width, size.height}});
  }
}

}  // namespace tarni::headless
