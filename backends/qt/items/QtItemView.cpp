#include "backends/qt/items/QtItemView.h"

#include <QtCore/QPointer>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QListView>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionViewItem>
#include <QtWidgets/QStyledItemDelegate>
#include <QtWidgets/QTreeView>
#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "backends/qt/items/ItemSearch.h"
#include "backends/qt/items/VisibleIndexes.h"
#include "backends/qt/program/InputQueue.h"
#include "backends/qt/program/QtText.h"
#include "backends/qt/program/Stillness.h"
#include "backends/qt/views/ViewRegistry.h"
#include "platform/Foundation/NSException.h"
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

std::optional<std::string> textOf(const QAbstractItemView& view, const QModelIndex& index) {
  const QVariant value = index.data(Qt::DisplayRole);
  // The delegate writes numbers and dates in the language of the view.
  const QStyledItemDelegate* const delegate = delegateOf(view, index);
  return nonEmpty(delegate ? delegate->displayText(value, view.locale()) : value.toString());
}

bool isCheckable(const QModelIndex& index) {
  return index.flags().testFlag(Qt::ItemIsUserCheckable) &&
         index.data(Qt::CheckStateRole).isValid();
}

// By the user, with the keyboard or the mouse.
bool isEditable(const QAbstractItemView& view, const QModelIndex& index) {
  return view.isEnabled() && view.editTriggers() != QAbstractItemView::NoEditTriggers &&
         index.flags().testFlag(Qt::ItemIsEditable) && index.flags().testFlag(Qt::ItemIsEnabled);
}

// To the type of the other.
bool convert(QVariant& value, const QVariant& other) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  return value.convert(other.metaType());
#else
  return value.convert(other.userType());
#endif
}

[[noreturn]] void refuse(const std::string& why) {
  throw platform::NSException(platform::NSInvalidArgumentException, why);
}

// In the viewport.
QRect checkBoxRect(const QAbstractItemView& view, const QModelIndex& index) {
  QStyleOptionViewItem option;
  option.initFrom(&view);
  option.rect = view.visualRect(index);
  option.index = index;
  option.widget = &view;
  option.text = index.data(Qt::DisplayRole).toString();
  option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
  return view.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &view);
}

const QTreeView* treeWithNodeAt(const QAbstractItemView& view, const QModelIndex& index) {
  const auto* const tree = qobject_cast<const QTreeView*>(&view);
  if (!tree || !tree->itemsExpandable()) return nullptr;
  const int column =
      tree->treePosition() < 0 ? tree->header()->logicalIndex(0) : tree->treePosition();
  if (index.column() != column || !index.model()->hasChildren(index.siblingAtColumn(0))) {
    return nullptr;
  }
  return tree->rootIsDecorated() || index.parent() != tree->rootIndex() ? tree : nullptr;
}

// From the top: a closed node may load what is below it only when it is opened.
void openNodesAbove(const QPointer<QAbstractItemView>& view, const QPersistentModelIndex& item) {
  std::vector<QPersistentModelIndex> above;
  for (QModelIndex at = item.parent(); at.isValid(); at = at.parent()) above.emplace_back(at);
  for (auto node = above.rbegin(); node != above.rend(); ++node) {
    if (auto* const tree = qobject_cast<QTreeView*>(view.data())) tree->expand(*node);
  }
}

// In the viewport: the last indentation before the row's contents.
QRect nodeRect(const QTreeView& tree, const QModelIndex& index) {
  const QRect row = tree.visualRect(index);
  QStyleOption option;
  option.initFrom(&tree);
  option.rect = row;
  option.rect.setWidth(tree.indentation());
  if (tree.isRightToLeft()) {
    option.rect.moveLeft(row.right() + 1);
  } else {
    option.rect.moveRight(row.left() - 1);
  }
  return tree.style()->subElementRect(QStyle::SE_TreeViewDisclosureItem, &option, &tree);
}

}  // namespace

// -------------------------------------------------------------------------------------- QtItemPart

QRect QtItemPart::shape() const {
  const QAbstractItemView* const view = itemView();
  if (!view) return {};
  const QWidget& viewport = *view->viewport();
  return (placeIn(*view) & viewport.rect()).translated(viewport.pos());
}

bool QtItemPart::isUserInteractionEnabled() const {
  const QAbstractItemView* const view = itemView();
  return view && view->isEnabled() && index_.flags().testFlag(Qt::ItemIsEnabled);
}

std::optional<std::string> QtItemPart::text() const {
  const QAbstractItemView* const view = itemView();
  return view ? textOf(*view, index_) : std::nullopt;
}

// ------------------------------------------------------------------------------------------ QtCell

std::shared_ptr<QtCellSwitch> QtCell::checkBox() const {
  if (!isCheckable(index())) return nullptr;
  if (!checkBox_) checkBox_ = std::make_shared<QtCellSwitch>(owner(), index());
  return checkBox_;
}

std::shared_ptr<QtTreeNode> QtCell::node() const {
  const QAbstractItemView* const view = itemView();
  if (!view || !treeWithNodeAt(*view, index())) return nullptr;
  if (!node_) node_ = std::make_shared<QtTreeNode>(owner(), index());
  return node_;
}

platform::ItemPlace QtCell::place() const {
  return {index().row(), index().column()};
}

std::optional<bool> QtCell::isExpanded() const {
  const QAbstractItemView* const view = itemView();
  const QTreeView* const tree = view ? treeWithNodeAt(*view, index()) : nullptr;
  if (!tree) return std::nullopt;
  return tree->isExpanded(index().sibling(index().row(), 0));
}

platform::Task<void> QtCell::setExpanded(bool expanded) {
  return performAsInput(
      [tree = QPointer(qobject_cast<QTreeView*>(widget())), index = index(), expanded] {
        if (tree && index.isValid()) tree->setExpanded(index.sibling(index.row(), 0), expanded);
      });
}

platform::Task<void> QtCell::setCellValue(std::string value) {
  return performAsInput(
      [view = QPointer(itemView()), index = index(), value = QString::fromStdString(value)] {
        if (!view || !isEditable(*view, index)) refuse("The cell cannot be edited");
        const QVariant before = index.data(Qt::EditRole);
        QVariant typed(value);
        if (before.isValid() && !convert(typed, before)) {
          refuse("\"" + utf8(value) + "\" is no value like \"" + utf8(before.toString()) + "\"");
        }
        if (!view->model()->setData(index, typed, Qt::EditRole)) {
          refuse("The program does not take \"" + utf8(value) + "\" in this cell");
        }
      });
}

QRect QtCell::placeIn(const QAbstractItemView& view) const {
  return view.visualRect(index());
}

std::optional<bool> QtCell::isSelected() const {
  const QAbstractItemView* const view = itemView();
  if (!view || !view->selectionModel()) return std::nullopt;
  return view->selectionModel()->isSelected(index());
}

std::optional<bool> QtCell::isChecked() const {
  const QVariant state = itemView() ? index().data(Qt::CheckStateRole) : QVariant();
  if (!state.isValid()) return std::nullopt;
  return state.toInt() == Qt::Checked;
}

std::optional<std::string> QtCell::accessibilityValue() const {
  const auto checked = isChecked();
  return checked ? std::optional(checkText(*checked)) : std::nullopt;
}

std::optional<std::string> QtCell::accessibilityLabel() const {
  if (!itemView()) return std::nullopt;
  const QString told = index().data(Qt::AccessibleTextRole).toString();
  return told.isEmpty() ? cellText() : utf8(told);
}

std::optional<std::string> QtCell::accessibilityHint() const {
  if (!itemView()) return std::nullopt;
  return nonEmpty(withoutMarkup(index().data(Qt::ToolTipRole).toString()));
}

// ------------------------------------------------------------------------------------ QtCellSwitch

QtCellSwitch::QtCellSwitch(std::weak_ptr<const QtView> owner, const QPersistentModelIndex& index)
    : QtItemPart(std::move(owner), platform::uikit::UISwitch, index) {}

QRect QtCellSwitch::placeIn(const QAbstractItemView& view) const {
  return checkBoxRect(view, index());
}

bool QtCellSwitch::isOn() const {
  return exists() && index().data(Qt::CheckStateRole).toInt() == Qt::Checked;
}

platform::Task<void> QtCellSwitch::setOn(bool on) {
  return performAsInput([index = index(), on] {
    if (!index.isValid() || !index.flags().testFlag(Qt::ItemIsEnabled)) return;
    const_cast<QAbstractItemModel*>(index.model())
        ->setData(index, on ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
  });
}

platform::Task<void> QtCellSwitch::sendActionsForControlEvents(std::uint32_t) {
  co_return;
}

// -------------------------------------------------------------------------------------- QtTreeNode

QtTreeNode::QtTreeNode(std::weak_ptr<const QtView> owner, const QPersistentModelIndex& index)
    : QtItemPart(std::move(owner),
                 platform::defineClass(names::kDisclosureButton, platform::uikit::UIButton),
                 index) {}

QRect QtTreeNode::placeIn(const QAbstractItemView& view) const {
  return nodeRect(static_cast<const QTreeView&>(view), index());
}

bool QtTreeNode::isUserInteractionEnabled() const {
  const QWidget* const tree = widget();
  return tree && tree->isEnabled();
}

platform::Task<void> QtTreeNode::sendActionsForControlEvents(std::uint32_t) {
  co_return;
}

std::optional<bool> QtTreeNode::isExpanded() const {
  const auto* const tree = static_cast<const QTreeView*>(widget());
  if (!tree) return std::nullopt;
  return tree->isExpanded(index().sibling(index().row(), 0));
}

std::optional<std::string> QtTreeNode::accessibilityValue() const {
  const auto expanded = isExpanded();
  if (!expanded) return std::nullopt;
  return *expanded ? "expanded" : "collapsed";
}

// -------------------------------------------------------------------------------------- QtItemView

QAbstractItemView& QtItemView::itemView() const {
  return static_cast<QAbstractItemView&>(*widget());
}

long QtItemView::numberOfRows() const {
  const bool isThere = widget() && itemView().model();
  return isThere ? itemView().model()->rowCount(itemView().rootIndex()) : 0;
}

long QtItemView::numberOfColumns() const {
  if (!widget() || !itemView().model()) return 0;
  if (qobject_cast<QListView*>(widget())) return 1;
  return itemView().model()->columnCount(itemView().rootIndex());
}

platform::Task<bool> QtItemView::scrollToText(std::string text) {
  const auto isFound = std::make_shared<bool>(false);
  std::function<void()> show = [isFound,
                                view = QPointer(qobject_cast<QAbstractItemView*>(widget())),
                                text = QString::fromStdString(text)] {
    const QPersistentModelIndex item = view ? itemWithText(*view, text) : QModelIndex();
    *isFound = item.isValid();
    openNodesAbove(view, item);
    if (view && item.isValid()) view->scrollTo(item);
  };
  co_await performAsInput(std::move(show));
  co_return *isFound;
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
  for (const auto& cell : cells_) {
    views.push_back(cell);
    if (auto box = cell->checkBox()) views.push_back(std::move(box));
    if (auto node = cell->node()) views.push_back(std::move(node));
  }
}

UIViewRef QtItemView::partAt(const QPoint& point) const {
  const QPoint inside = point - itemView().viewport()->pos();
  if (!itemView().viewport()->rect().contains(inside)) return nullptr;
  const QModelIndex index = itemView().indexAt(inside);
  if (!index.isValid()) return nullptr;
  renewCells();
  const auto found =
      std::ranges::find_if(cells_, [&](const auto& cell) { return cell->index() == index; });
  if (found == cells_.end()) return nullptr;
  if (const auto box = (*found)->checkBox(); box && box->shape().contains(point)) return box;
  if (const auto node = (*found)->node(); node && node->shape().contains(point)) return node;
  return *found;
}

void QtItemView::renewCells() const {
  static const char key = 0;
  auto* const renewed = keptWhileStill<std::unordered_set<const QtItemView*>>(&key);
  if (renewed && !renewed->insert(this).second) return;
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
