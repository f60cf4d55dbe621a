// CollectionView: a UICollectionView that fills its width with items of one size, row by row, and
// its cells. Main thread.
#pragma once

#include "backends/headless/views/ItemsView.h"

namespace tarni::headless {

// A UICollectionViewCell: an empty content view, for the application to fill.
class CollectionViewCell : public View {
 public:
  explicit CollectionViewCell(platform::Class cls = platform::uikit::UICollectionViewCell);

  const ViewRef& contentView() const { return contentView_; }

 protected:
  void layoutSubviews() override;

 private:
  ViewRef contentView_;
};

class CollectionView : public ItemsView {
 public:
  explicit CollectionView(platform::CGSize itemSize, double spacing = 10,
                          platform::Class cls = platform::uikit::UICollectionView);

 protected:
  platform::CGRect frameOfItem(long item) const override;
  platform::CGSize sizeOfItems(long count) const override;
  std::pair<long, long> itemsInRect(const platform::CGRect& visible) const override;

 private:
  long itemsInRow() const;

  platform::CGSize itemSize_;
  double spacing_;
};

}  // namespace tarni::headless
