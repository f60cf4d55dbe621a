#include "backends/headless/views/CollectionView.h"

#include <algorithm>
#include <cmath>

#include "backends/headless/drawing/TextStyle.h"

namespace tarni::headless {

CollectionViewCell::CollectionViewCell(platform::Class cls)
    : View(cls), contentView_(std::make_shared<View>()) {
  addSubview(contentView_);
}

void CollectionViewCell::layoutSubviews() {
  contentView_->setFrame(bounds());
}

CollectionView::CollectionView(platform::CGSize itemSize, double spacing, platform::Class cls)
    : ItemsView(cls), itemSize_(itemSize), spacing_(spacing) {
  setBackgroundColor(colors::kWhite);
}

long CollectionView::itemsInRow() const {
  const double fitting = (bounds().size.width + spacing_) / (itemSize_.width + spacing_);
  return std::max(1L, static_cast<long>(fitting));
}

platform::CGRect CollectionView::frameOfItem(long item) const {
  const long column = item % itemsInRow();
  const long row = item / itemsInRow();
  return {{static_cast<double>(column) * (itemSize_.width + spacing_),
           static_cast<double>(row) * (itemSize_.height + spacing_)},
          itemSize_};
}

platform::CGSize CollectionView::sizeOfItems(long count) const {
  const long rows = (count + itemsInRow() - 1) / itemsInRow();
  const double height = static_cast<double>(rows) * (itemSize_.height + spacing_) - spacing_;
  return {bounds().size.width, std::max(0.0, height)};
}

std::pair<long, long> CollectionView::itemsInRect(const platform::CGRect& visible) const {
  const double rowHeight = itemSize_.height + spacing_;
  const auto firstRow = static_cast<long>(std::floor(visible.minY() / rowHeight));
  const auto endRow = static_cast<long>(std::ceil(visible.maxY() / rowHeight));
  return {firstRow * itemsInRow(), endRow * itemsInRow()};
}

}  // namespace tarni::headless
