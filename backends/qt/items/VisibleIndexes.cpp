#include "backends/qt/items/VisibleIndexes.h"

#include <QtWidgets/QColumnView>
#include <QtWidgets/QListView>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>
#include <algorithm>
#include <limits>
#include <optional>

namespace tarni::qt {
namespace {

using Indexes = std::vector<QModelIndex>;

// An item view of the application's own making, or one whose items are moved about freely, is
// looked through item by item, but no further than this.
constexpr int kMostRowsLookedThrough = 5000;

void appendFromTable(const QTableView& table, Indexes& indexes) {
  const QHeaderView& rows = *table.verticalHeader();
  const QHeaderView& columns = *table.horizontalHeader();
  const auto first = static_cast<std::ptrdiff_t>(indexes.size());
  eachVisibleSection(rows, [&](int row) {
    // A header section may begin above the viewport.
    const int y = std::max(0, table.rowViewportPosition(row));
    eachVisibleSection(columns, [&](int column) {
      const int x = std::max(0, table.columnViewportPosition(column));
      const QModelIndex index = table.indexAt({x, y});
      const bool spanned = index.row() != row || index.column() != column;
      if (!index.isValid()) return;
      if (spanned && std::find(indexes.begin() + first, indexes.end(), index) != indexes.end()) {
        return;
      }
      indexes.push_back(index);
    });
  });
}

void appendFromTree(const QTreeView& tree, Indexes& indexes) {
  const QHeaderView& columns = *tree.header();
  const int height = tree.viewport()->height();
  int firstColumn = -1;
  eachVisibleSection(columns, [&](int column) {
    if (firstColumn < 0) firstColumn = column;
  });
  if (firstColumn < 0) return;
  const int x = std::max(0, tree.columnViewportPosition(firstColumn));
  for (QModelIndex index = tree.indexAt({x, 0}); index.isValid(); index = tree.indexBelow(index)) {
    if (tree.visualRect(index.siblingAtColumn(firstColumn)).top() >= height) return;
    if (tree.isFirstColumnSpanned(index.row(), index.parent())) {
      indexes.push_back(index.siblingAtColumn(0));
      continue;
    }
    eachVisibleSection(columns, [&](int column) {
      const QModelIndex cell = index.siblingAtColumn(column);
      if (cell.isValid()) indexes.push_back(cell);
    });
  }
}

// The items of a list view follow each other in rows (or columns) along one axis, so the first
// visible one is found by halving.
class ListScan {
 public:
  explicit ListScan(const QListView& list)
      : list_(list),
        model_(*list.model()),
        rows_(model_.rowCount(list.rootIndex())),
        down_(list.isWrapping() == (list.flow() == QListView::LeftToRight)),
        viewport_(list.viewport()->rect()) {}

  void appendTo(Indexes& indexes) const {
    for (int row = firstRow(); row < rows_; ++row) {
      if (list_.isRowHidden(row)) continue;
      const QRect rect = rectOf(row);
      if (startOf(rect) >= (down_ ? viewport_.height() : viewport_.width())) return;
      if (rect.intersects(viewport_)) indexes.push_back(indexOf(row));
    }
  }

 private:
  QModelIndex indexOf(int row) const {
    return model_.index(row, list_.modelColumn(), list_.rootIndex());
  }

  QRect rectOf(int row) const { return list_.visualRect(indexOf(row)); }

  // Where an item begins and ends along the axis. One that is not laid out yet comes after all.
  int startOf(const QRect& rect) const {
    if (rect.isEmpty()) return std::numeric_limits<int>::max();
    if (down_) return rect.top();
    return list_.layoutDirection() == Qt::RightToLeft ? viewport_.right() - rect.right()
                                                      : rect.left();
  }
  int endOf(const QRect& rect) const {
    return startOf(rect) + (down_ ? rect.height() : rect.width());
  }

  int nextShown(int row, int end) const {
    while (row < end && list_.isRowHidden(row)) ++row;
    return row;
  }

  int firstRow() const {
    int low = 0;
    int high = rows_;
    while (low < high) {
      const int middle = low + (high - low) / 2;
      const int shown = nextShown(middle, high);
      if (shown < high && startOf(rectOf(shown)) < 0) {
        low = shown + 1;
      } else {
        high = middle;
      }
    }
    return backToPartlyVisible(low);
  }

  // What begins before the viewport may reach into it. Items that begin together stand side by
  // side.
  int backToPartlyVisible(int first) const {
    int row = first;
    bool reaches = true;
    while (reaches && row > 0) {
      reaches = false;
      std::optional<int> together;
      for (; row > 0; --row) {
        if (list_.isRowHidden(row - 1)) continue;
        const QRect rect = rectOf(row - 1);
        if (together.value_or(startOf(rect)) != startOf(rect)) break;
        together = startOf(rect);
        reaches = reaches || endOf(rect) > 0;
      }
      if (reaches) first = row;
    }
    return first;
  }

  const QListView& list_;
  const QAbstractItemModel& model_;
  const int rows_;
  const bool down_;
  const QRect viewport_;
};

void appendOneByOne(const QAbstractItemView& view, int column, Indexes& indexes) {
  const QAbstractItemModel& model = *view.model();
  const int rows = std::min(model.rowCount(view.rootIndex()), kMostRowsLookedThrough);
  for (int row = 0; row < rows; ++row) {
    const QModelIndex index = model.index(row, column, view.rootIndex());
    if (view.visualRect(index).intersects(view.viewport()->rect())) indexes.push_back(index);
  }
}

}  // namespace

void appendVisibleIndexes(const QAbstractItemView& view, Indexes& indexes) {
  if (!view.model() || !view.isVisible()) return;
  if (const auto* const table = qobject_cast<const QTableView*>(&view)) {
    appendFromTable(*table, indexes);
  } else if (const auto* const tree = qobject_cast<const QTreeView*>(&view)) {
    appendFromTree(*tree, indexes);
  } else if (const auto* const list = qobject_cast<const QListView*>(&view)) {
    const bool movedAbout = list->movement() == QListView::Free &&
                            list->model()->rowCount(list->rootIndex()) <= kMostRowsLookedThrough;
    if (movedAbout) {
      appendOneByOne(*list, list->modelColumn(), indexes);
    } else {
      ListScan(*list).appendTo(indexes);
    }
  } else if (!qobject_cast<const QColumnView*>(&view)) {  // its columns are list views themselves
    appendOneByOne(view, 0, indexes);
  }
}

}  // namespace tarni::qt
