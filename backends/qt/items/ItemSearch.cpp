#include "backends/qt/items/ItemSearch.h"

#include <QtCore/QElapsedTimer>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QListView>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>

#include "platform/Foundation/NSException.h"

namespace tarni::qt {
namespace {

constexpr int kLongestSearch = 2000;  // milliseconds, while the program stands still
constexpr int kItemsBetweenLooksAtTheClock = 1024;

class ItemSearch {
 public:
  ItemSearch(const QAbstractItemView& view, const QString& text)
      : list_(qobject_cast<const QListView*>(&view)),
        table_(qobject_cast<const QTableView*>(&view)),
        tree_(qobject_cast<const QTreeView*>(&view)),
        model_(*view.model()),
        text_(text) {
    clock_.start();
  }

  QModelIndex below(const QModelIndex& parent, bool isOpen) {
    const int firstColumn = list_ ? list_->modelColumn() : 0;
    const int endColumn = list_ ? firstColumn + 1 : model_.columnCount(parent);
    for (int row = 0; hasRow(row, parent, isOpen); ++row) {
      for (int column = firstColumn; column < endColumn; ++column) {
        const QModelIndex index = model_.index(row, column, parent);
        if (shows(index) && !isHidden(index)) return index;
      }
      const QModelIndex node = tree_ ? model_.index(row, 0, parent) : QModelIndex();
      if (!node.isValid() || !model_.hasChildren(node)) continue;
      const QModelIndex found = below(node, tree_->isExpanded(node));
      if (found.isValid()) return found;
    }
    return {};
  }

 private:
  bool hasRow(int row, const QModelIndex& parent, bool isOpen) {
    if (row < model_.rowCount(parent)) return true;
    if (!isOpen || !model_.canFetchMore(parent)) return false;
    model_.fetchMore(parent);
    return row < model_.rowCount(parent);
  }

  bool shows(const QModelIndex& index) {
    if (++looked_ % kItemsBetweenLooksAtTheClock == 0 && clock_.elapsed() > kLongestSearch) {
      throw platform::NSException(
          platform::NSGenericException,
          "Not among the first " + std::to_string(looked_) + " items; looking on would take long");
    }
    return index.data(Qt::DisplayRole).toString() == text_;
  }

  bool isHidden(const QModelIndex& index) const {
    const int row = index.row();
    if (list_) return list_->isRowHidden(row);
    if (table_) return table_->isRowHidden(row) || table_->isColumnHidden(index.column());
    if (tree_)
      return tree_->isRowHidden(row, index.parent()) || tree_->isColumnHidden(index.column());
    return false;
  }

  const QListView* list_;
  const QTableView* table_;
  const QTreeView* tree_;
  QAbstractItemModel& model_;
  const QString& text_;
  QElapsedTimer clock_;
  long looked_ = 0;
};

}  // namespace

QModelIndex itemWithText(const QAbstractItemView& view, const QString& text) {
  if (!view.model()) return {};
  return ItemSearch(view, text).below(view.rootIndex(), true);
}

}  // namespace tarni::qt
