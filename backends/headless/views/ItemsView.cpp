#include "backends/headless/views/ItemsView.h"

#include <algorithm>

namespace tarni::headless {

ItemsView::ItemsView(platform::Class cls) : ScrollView(cls) {}

void ItemsView::setItems(long count, CellSource source) {
  setStructure(count_, std::max(0L, count));
  source_ = std::move(source);
  reloadData();
}

void ItemsView::reloadData() {
  removeCellsOutside(0, 0);
  reusable_.clear();
  setStructure(selectedItem_, -1);
  layoutSubviews();
}

platform::Task<bool> ItemsView::scrollToText(std::string text) {
  ViewRef cell;
  for (long item = 0; item < count_; ++item) {
    cell = source_(item, cell);
    const auto* const told = dynamic_cast<const platform::UITableViewCell*>(cell.get());
    if (!told || told->cellText() != text) continue;
    const platform::CGRect place = frameOfItem(item);
    const platform::CGRect shown = bounds();
    if (place.minY() < shown.minY()) scrollBy({0, place.minY() - shown.minY()});
    if (place.maxY() > shown.maxY()) scrollBy({0, place.maxY() - shown.maxY()});
    co_return true;
  }
  co_return false;
}

ViewRef ItemsView::cellForItem(long item) const {
  const auto found = cells_.find(item);
  return found == cells_.end() ? nullptr : found->second;
}

long ItemsView::itemOfCell(const View& cell) const {
  for (const View* view = &cell; view; view = view->parent()) {
    const auto found =
        std::ranges::find_if(cells_, [&](const auto& entry) { return entry.second.get() == view; });
    if (found != cells_.end()) return found->first;
  }
  return -1;
}

void ItemsView::select(long item) {
  if (item < 0 || item >= count_) return;
  setStructure(selectedItem_, item);
  const auto action = selected_;
  if (action) action(item);
}

bool ItemsView::handleTouch(platform::UITouchPhase phase, platform::UITouch& touch) {
  const auto touched = std::dynamic_pointer_cast<View>(touch.view());
  if (phase != platform::UITouchPhase::Ended || !touched) return true;
  const long item = itemOfCell(*touched);
  if (item >= 0 && touched->pointInside(touch.locationInView(touched))) select(item);
  return true;
}

void ItemsView::layoutSubviews() {
  setContentSize(sizeOfItems(count_));
  auto [first, end] = count_ > 0 ? itemsInRect(bounds()) : std::pair(0L, 0L);
  first = std::clamp(first, 0L, count_);
  end = std::clamp(end, first, count_);
  removeCellsOutside(first, end);
  for (long item = first; item < end; ++item) {
    if (cells_.contains(item)) {
      cells_[item]->setFrame(frameOfItem(item));
      continue;
    }
    ViewRef reusable;
    if (!reusable_.empty()) {
      reusable = std::move(reusable_.back());
      reusable_.pop_back();
    }
    const ViewRef cell = source_(item, reusable);
    if (!cell) continue;
    cell->setFrame(frameOfItem(item));
    const auto added = cells_.emplace(item, cell).first;
    insertSubview(cell, static_cast<std::size_t>(std::distance(cells_.begin(), added)));
  }
}

void ItemsView::removeCellsOutside(long first, long end) {
  std::erase_if(cells_, [&](const auto& entry) {
    if (entry.first >= first && entry.first < end) return false;
    entry.second->removeFromSuperview();
    reusable_.push_back(entry.second);
    return true;
  });
}

}  // namespace tarni::headless
