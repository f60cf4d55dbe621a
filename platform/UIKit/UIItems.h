// What lists, tables, trees and their cells tell beyond what is on screen. A backend's view derives
// from UIView and from these; `as<UIItems>(view)` asks for one. Main thread only.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/UIKit/UIView.h"

namespace tarni::platform {

struct ItemPlace {
  long row = 0;
  long column = 0;
};

class UIItems {
 public:
  virtual ~UIItems() = default;
  // Of the top level of a tree.
  virtual long numberOfRows() const = 0;
  virtual long numberOfColumns() const = 0;
  // Brings the first item with this text on screen, whether or not it has a cell yet, and opens the
  // nodes of a tree above it. False when no item has the text.
  virtual Task<bool> scrollToText(std::string text) = 0;
};

class UIItemCell {
 public:
  virtual ~UIItemCell() = default;
  // Below the node that it stands under, in a tree.
  virtual ItemPlace place() const = 0;
  // Only of one that says whether it is expanded.
  virtual Task<void> setExpanded(bool expanded) = 0;
  // What a person's edit of the cell would leave in it. Throws NSException (invalid argument) where
  // a person cannot edit it or the application does not take the value.
  virtual Task<void> setCellValue(std::string value) = 0;
};

// A control with a value that is not a text field's: a combo box, a spin box, a slider, a tab bar.
class UIValueControl {
 public:
  virtual ~UIValueControl() = default;
  // What it shows.
  virtual std::string currentValue() const = 0;
  // By its text, as a person would choose or type it; the application hears of it as of a person's
  // choice. Throws NSException (invalid argument) that names what can be chosen when it cannot be.
  virtual Task<void> chooseValue(std::string value) = 0;
  // The texts of all that it chooses from, in their order, those that cannot be chosen now as well.
  // Empty where that is no list: a number, any text.
  virtual std::vector<std::string> choices() const { return {}; }
  // Among these; null when none is chosen.
  virtual std::optional<std::size_t> chosenPlace() const { return std::nullopt; }
  // The one in that place of these, as `chooseValue` does it.
  virtual Task<void> choosePlace(std::size_t place) { return chooseValue(choices().at(place)); }
};

}  // namespace tarni::platform
