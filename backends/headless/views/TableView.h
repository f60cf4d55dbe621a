// TableView: a UITableView of one section with rows of one height, and its cells. Main thread.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "backends/headless/views/ItemsView.h"
#include "backends/headless/views/Label.h"

namespace tarni::headless {

// A UITableViewCell: a UITableViewCellContentView with a UITableViewLabel.
class TableViewCell : public View, public platform::UITableViewCell, public platform::UIItemCell {
 public:
  explicit TableViewCell(std::optional<std::string> text = std::nullopt,
                         platform::Class cls = platform::uikit::UITableViewCell);

  std::optional<std::string> cellText() const override { return label_->labelText(); }
  platform::ItemPlace place() const override;
  std::optional<bool> isSelected() const override;
  platform::Task<void> setExpanded(bool) override { co_return; }
  // Nobody can edit it.
  platform::Task<void> setCellValue(std::string value) override;
  void setText(std::optional<std::string> text) { label_->setText(std::move(text)); }
  const ViewRef& contentView() const { return contentView_; }
  const std::shared_ptr<Label>& textLabel() const { return label_; }

  void drawContent(Canvas& canvas) const override;

 protected:
  void layoutSubviews() override;

 private:
  ViewRef contentView_;
  std::shared_ptr<Label> label_;
};

class TableView : public ItemsView {
 public:
  explicit TableView(double rowHeight = 44, platform::Class cls = platform::uikit::UITableView);

  double rowHeight() const { return rowHeight_; }
  // A row for each text.
  void setRows(std::vector<std::string> texts);

 protected:
  platform::CGRect frameOfItem(long item) const override;
  platform::CGSize sizeOfItems(long count) const override;
  std::pair<long, long> itemsInRect(const platform::CGRect& visible) const override;

 private:
  double rowHeight_;
};

}  // namespace tarni::headless
