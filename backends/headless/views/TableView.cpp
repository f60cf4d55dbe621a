#include "backends/headless/views/TableView.h"

#include <cmath>

#include "backends/headless/drawing/Canvas.h"
#include "platform/Foundation/NSException.h"

namespace tarni::headless {
namespace {

platform::Class contentViewClass() {
  return platform::defineClass("UITableViewCellContentView", platform::uikit::UIView);
}

platform::Class cellLabelClass() {
  return platform::defineClass("UITableViewLabel", platform::uikit::UILabel);
}

constexpr double kLabelInset = 16;  // points

}  // namespace

TableViewCell::TableViewCell(std::optional<std::string> text, platform::Class cls)
    : View(cls),
      contentView_(std::make_shared<View>(contentViewClass())),
      label_(std::make_shared<Label>(std::move(text), cellLabelClass())) {
  setBackgroundColor(colors::kWhite);
  contentView_->addSubview(label_);
  addSubview(contentView_);
}

platform::Task<void> TableViewCell::setCellValue(std::string /*value*/) {
  throw platform::NSException(platform::NSInvalidArgumentException, "The cell cannot be edited");
}

platform::ItemPlace TableViewCell::place() const {
  const auto* const table = dynamic_cast<const ItemsView*>(parent());
  return {table ? table->itemOfCell(*this) : 0, 0};
}

std::optional<bool> TableViewCell::isSelected() const {
  const auto* const table = dynamic_cast<const ItemsView*>(parent());
  if (!table) return std::nullopt;
  return table->itemOfCell(*this) == table->selectedItem();
}

void TableViewCell::layoutSubviews() {
  const platform::CGSize size = bounds().size;
  contentView_->setFrame({{0, 0}, size});
  label_->setFrame({{kLabelInset, 0}, {size.width - 2 * kLabelInset, size.height}});
}

void TableViewCell::drawContent(Canvas& canvas) const {
  const platform::CGRect own = bounds();
  const double y = own.maxY() - 0.5;
  canvas.line({own.minX() + kLabelInset, y}, {own.maxX(), y}, colors::kLightGray, 0.5);
}

TableView::TableView(double rowHeight, platform::Class cls)
    : ItemsView(cls), rowHeight_(rowHeight) {
  setBackgroundColor(colors::kWhite);
}

void TableView::setRows(std::vector<std::string> texts) {
  const auto count = static_cast<long>(texts.size());
  setItems(count, [texts = std::move(texts)](long item, const ViewRef& reusable) -> ViewRef {
    auto cell = std::dynamic_pointer_cast<TableViewCell>(reusable);
    if (!cell) cell = std::make_shared<TableViewCell>();
    cell->setText(texts[static_cast<std::size_t>(item)]);
    return cell;
  });
}

platform::CGRect TableView::frameOfItem(long item) const {
  return {{0, rowHeight_ * static_cast<double>(item)}, {bounds().size.width, rowHeight_}};
}

platform::CGSize TableView::sizeOfItems(long count) const {
  return {bounds().size.width, rowHeight_ * static_cast<double>(count)};
}

std::pair<long, long> TableView::itemsInRect(const platform::CGRect& visible) const {
  return {static_cast<long>(std::floor(visible.minY() / rowHeight_)),
          static_cast<long>(std::ceil(visible.maxY() / rowHeight_))};
}

}  // namespace tarni::headless
