// The values of combo boxes, spin boxes, sliders and tab bars, and lists whose items are looked for
// by their text. GUI thread.
#pragma once

#include "backends/qt/quick/QuickControls.h"
#include "platform/UIKit/UIItems.h"

namespace tarni::qt {

// Whether the item has a value of its own.
bool hasValue(const QQuickItem& item);

// Of such an item; null gives nothing.
std::string valueOfItem(QQuickItem* item);
// With the signals of a person's choice. Throws NSException that says what can be chosen.
platform::Task<void> chooseValueOfItem(QQuickItem* item, const std::string& value);
// All that it chooses from; nothing where that is a number, or any text.
std::vector<std::string> choicesOfItem(QQuickItem* item);
std::optional<std::size_t> chosenPlaceOfItem(QQuickItem* item);
platform::Task<void> choosePlaceOfItem(QQuickItem* item, std::size_t place);

// A view of the kind `Base` whose item has a value.
template <typename Base>
class QuickWithValue final : public Base, public platform::UIValueControl {
 public:
  using Base::Base;
  std::string currentValue() const override { return valueOfItem(this->item()); }
  platform::Task<void> chooseValue(std::string value) override {
    return chooseValueOfItem(this->item(), value);
  }
  std::vector<std::string> choices() const override { return choicesOfItem(this->item()); }
  std::optional<std::size_t> chosenPlace() const override {
    return chosenPlaceOfItem(this->item());
  }
  platform::Task<void> choosePlace(std::size_t place) override {
    return choosePlaceOfItem(this->item(), place);
  }
};

// A list, a grid, a table or a tree.
class QuickItems final : public QuickScrollView, public platform::UIItems {
 public:
  using QuickScrollView::QuickScrollView;
  long numberOfRows() const override;
  long numberOfColumns() const override;
  // By the role that holds the text ("display", "text", "name", "title", "modelData"), as far as
  // the model is one of the toolkit's or a list of texts, otherwise by what the delegates of the
  // first 5,000 rows show. Throws for a table or a tree that cannot be moved to a row.
  platform::Task<bool> scrollToText(std::string text) override;
};

}  // namespace tarni::qt
