#include "backends/qt/QtItemView.h"

#include <QtWidgets/QListView>
#include <QtWidgets/QStyledItemDelegate>
#include <algorithm>
#include <unordered_map>

#include "backends/qt/QtText.h"
#include "backends/qt/VisibleIndexes.h"
#include "platform/UIKit/Classes.h"

namespace tarni::qt {
namespace {

using platform::UIViewRef;

struct HashIndex {
  std::size_t operator()(const QModelIndex& index) const { return qHash(index); }
};

const QStyledItemDelegate* delegateOf(const QAbstractItemView& view, const QModelIndex& index) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  return qobject_cast<QStyledItemDelegate*>(view.itemDelegateForIndex(index));
#else
  return qobject_cast<QStyledItemDelegate*>(view.itemDelegate(index));
#endif
}

}  // namespace

// ------------------------------------------------------------------------------------------ QtCell

QRect QtCell::shape() const {
  const QAbstractItemView* const view = itemView();
  if (!view) return {};
  const QWidget& viewport = *view->viewport();
  return (view->visualRect(index_) & viewport.rect()).translated(viewport.pos());
}

bool QtCell::isUserInteractionEnabled() const {
  const QAbstractItemView* const view = itemView();
  return view && view->isEnabled() && index_.flags().testFlag(Qt::ItemIsEnabled);
}

std::optional<std::string> QtCell::cellText() const {
  const QAbstractItemView* const view = itemView();
  if (!view) return std::nullopt;
  const QVariant value = index_.data(Qt::DisplayRole);
  // The delegate writes numbers and dates in the language of the view.
  const QStyledItemDelegate* const delegate = delegateOf(*view, index_);
  return nonEmpty(delegate ? delegate->displayText(value, view->locale()) : value.toString());
}

std::optional<std::string> QtCell::accessibilityValue() const {
  const QVariant state = itemView() ? index_.data(Qt::CheckStateRole) : QVariant();
  if (!state.isValid()) return std::nullopt;
  return checkText(state.toInt() == Qt::Checked);
}

std::optional<std::string> QtCell::accessibilityLabel() const {
  if (!itemView()) return std::nullopt;
  const QString told = index_.data(Qt::AccessibleTextRole).toString();
  return told.isEmpty() ? cellText() : utf8(told);
}

std::optional<std::string> QtCell::accessibilityHint() const {
  if (!itemView()) return std::nullopt;
  return nonEmpty(withoutMarkup(index_.data(Qt::ToolTipRole).toString()));
}

// -------------------------------------------------------------------------------------- QtItemView

QAbstractItemView& QtItemView::itemView() const {
  return static_cast<QAbstractItemView&>(*widget());
}

Kind QtItemView::kind() const {
  const auto* const list = qobject_cast<QListView*>(widget());
  return list && list->viewMode() == QListView::IconMode ? Kind::CollectionView : Kind::TableView;
}

bool QtItemView::scrollsPerItem(Qt::Orientation orientation) const {
  const QAbstractItemView::ScrollMode mode = orientation == Qt::Horizontal
                                                 ? itemView().horizontalScrollMode()
                                                 : itemView().verticalScrollMode();
  return mode == QAbstractItemView::ScrollPerItem;
}

void QtItemView::appendParts(std::vector<UIViewRef>& views) const {
  renewCells();
  views.insert(views.end(), cells_.begin(), cells_.end());
}

UIViewRef QtItemView::partAt(const QPoint& point) const {
  const QPoint inside = point - itemView().viewport()->pos();
  if (!itemView().viewport()->rect().contains(inside)) return nullptr;
  const QModelIndex index = itemView().indexAt(inside);
  if (!index.isValid()) return nullptr;
  renewCells();
  const auto found =
      std::ranges::find_if(cells_, [&](const auto& cell) { return cell->index() == index; });
  return found == cells_.end() ? nullptr : *found;
}

void QtItemView::renewCells() const {
  static auto* const spare = new std::vector<QModelIndex>;
  std::vector<QModelIndex> indexes = std::move(*spare);
  indexes.clear();
  appendVisibleIndexes(itemView(), indexes);
  const platform::Class kind = this->kind() == Kind::CollectionView
                                   ? platform::uikit::UICollectionViewCell
                                   : platform::uikit::UITableViewCell;
  const auto fits = [&](const QModelIndex& index, const auto& cell) {
    return cell->index() == index && cell->getClass() == kind;
  };
  if (!std::ranges::equal(indexes, cells_, fits)) {
    std::unordered_map<QModelIndex, std::shared_ptr<QtCell>, HashIndex> known;
    for (const auto& cell : cells_) {
      if (cell->getClass() == kind) known.emplace(cell->index(), cell);
    }
    cells_.clear();
    for (const QModelIndex& index : indexes) {
      const auto same = known.find(index);
      cells_.push_back(
          same != known.end()
              ? same->second
              : std::make_shared<QtCell>(std::static_pointer_cast<const QtView>(shared_from_this()),
                                         kind, index));
    }
  }
  indexes.clear();
  *spare = std::move(indexes);
}

}  // namespace tarni::qt
