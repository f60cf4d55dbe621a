// The views of lists, trees and tables, of their cells, and of the check boxes and tree nodes that
// people can click in these. Only the cells on screen are views, so a model of a million rows costs
// what is seen of it. A cell stays the same view while its item stays on screen, wherever it moves.
// GUI thread.
#pragma once

#include <QtCore/QPersistentModelIndex>
#include <QtWidgets/QAbstractItemView>

#include "backends/qt/views/QtPart.h"
#include "backends/qt/views/QtScrollView.h"

namespace tarni::qt {

class QtCellSwitch;
class QtTreeNode;

class QtCell final : public QtPart, public platform::UITableViewCell {
 public:
  QtCell(std::weak_ptr<const QtView> owner, platform::Class cellClass, const QModelIndex& index)
      : QtPart(std::move(owner), cellClass), index_(index) {}

  const QPersistentModelIndex& index() const { return index_; }
  // The check box that is drawn in the cell, another view that stands above it; null when there is
  // none that could be clicked.
  std::shared_ptr<QtCellSwitch> checkBox() const;
  // What opens and closes the row of a tree, before its text; null when there is nothing below it.
  std::shared_ptr<QtTreeNode> node() const;

  // The visible part, so that the middle of a cell at the edge can be clicked.
  QRect shape() const override;
  bool isUserInteractionEnabled() const override;
  std::optional<std::string> cellText() const override;
  // The check mark, when the cell has one.
  std::optional<std::string> accessibilityValue() const override;
  std::optional<std::string> accessibilityLabel() const override;
  std::optional<std::string> accessibilityHint() const override;

 protected:
  bool exists() const override { return index_.isValid(); }

 private:
  // Null when the cell is no longer there.
  QAbstractItemView* itemView() const { return static_cast<QAbstractItemView*>(widget()); }

  const QPersistentModelIndex index_;
  mutable std::shared_ptr<QtCellSwitch> checkBox_;
  mutable std::shared_ptr<QtTreeNode> node_;
};

class QtCellSwitch final : public QtPart, public platform::UIControl, public platform::UISwitch {
 public:
  QtCellSwitch(std::weak_ptr<const QtView> owner, const QPersistentModelIndex& index);

  // Where the style draws it, as far as it is seen.
  QRect shape() const override;
  bool isUserInteractionEnabled() const override;
  bool isOn() const override;
  // As by a click: the model is told.
  platform::Task<void> setOn(bool on) override;
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override;
  std::optional<std::string> accessibilityValue() const override { return std::nullopt; }
  // The cell's text.
  std::optional<std::string> accessibilityLabel() const override;
  std::optional<std::string> accessibilityHint() const override { return std::nullopt; }

 protected:
  bool exists() const override { return index_.isValid(); }

 private:
  const QPersistentModelIndex index_;
};

class QtTreeNode final : public QtPart, public platform::UIControl, public platform::UIButton {
 public:
  QtTreeNode(std::weak_ptr<const QtView> owner, const QPersistentModelIndex& index);

  // Where the style draws it, as far as it is seen.
  QRect shape() const override;
  bool isUserInteractionEnabled() const override;
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override;
  // The row's text: a click changes the state, and the node is the same before and after.
  std::optional<std::string> currentTitle() const override;
  std::optional<std::string> accessibilityValue() const override;
  std::optional<std::string> accessibilityLabel() const override { return currentTitle(); }
  std::optional<std::string> accessibilityHint() const override { return std::nullopt; }

 protected:
  bool exists() const override { return index_.isValid(); }

 private:
  const QPersistentModelIndex index_;
};

class QtItemView final : public QtScrollView {
 public:
  using QtScrollView::QtScrollView;

 protected:
  Kind kind() const override;
  bool scrollsPerItem(Qt::Orientation orientation) const override;
  void appendParts(std::vector<platform::UIViewRef>& views) const override;
  platform::UIViewRef partAt(const QPoint& point) const override;

 private:
  QAbstractItemView& itemView() const;
  void renewCells() const;

  mutable std::vector<std::shared_ptr<QtCell>> cells_;
};

}  // namespace tarni::qt
