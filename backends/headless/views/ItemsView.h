// ItemsView: what table and collection views have in common. It holds cells only for the items that
// can be seen, asks a data source for them, and offers cells that went out of sight for use again.
// Main thread.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "backends/headless/views/ScrollView.h"
#include "platform/UIKit/UIItems.h"

namespace tarni::headless {

class ItemsView : public ScrollView, public platform::UIItems {
 public:
  // Makes the cell of an item or fills the one that is offered (null: none is free).
  using CellSource = std::function<ViewRef(long item, const ViewRef& reusable)>;

  explicit ItemsView(platform::Class cls);

  void setItems(long count, CellSource source);
  long numberOfItems() const { return count_; }
  // Throws away all cells and asks for those in sight again.
  void reloadData();
  long numberOfRows() const override { return count_; }
  long numberOfColumns() const override { return count_ > 0 ? 1 : 0; }
  // Asks the data source for one cell after the other, none of which is shown.
  platform::Task<bool> scrollToText(std::string text) override;
  // Null for an item out of sight.
  ViewRef cellForItem(long item) const;
  // -1 for a view that is not (in) one of the cells.
  long itemOfCell(const View& cell) const;
  void onSelect(std::function<void(long item)> action) { selected_ = std::move(action); }
  long selectedItem() const { return selectedItem_; }
  // As a tap on the item does.
  void select(long item);

  bool handleTouch(platform::UITouchPhase phase, platform::UITouch& touch) override;

 protected:
  // In content coordinates.
  virtual platform::CGRect frameOfItem(long item) const = 0;
  virtual platform::CGSize sizeOfItems(long count) const = 0;
  // First and one behind the last item that `visible` (content coordinates) may show.
  virtual std::pair<long, long> itemsInRect(const platform::CGRect& visible) const = 0;
  void layoutSubviews() override;

 private:
  void removeCellsOutside(long first, long end);

  long count_ = 0;
  long selectedItem_ = -1;
  CellSource source_;
  std::map<long, ViewRef> cells_;
  std::vector<ViewRef> reusable_;
  std::function<void(long)> selected_;
};

}  // namespace tarni::headless
