// The views of lists, trees and tables, of their cells, and of the check boxes and tree nodes that
// people can click in these. Only the cells on screen are views, so a model of a million rows costs
// what is seen of it. A cell stays the same view while its item stays on screen, wherever it moves.
// GUI thread.
#pragma once

#include <QtCore/QPersistentModelIndex>
#include <QtWidgets/QAbstractItemView>

#include "backends/qt/views/QtPart.h"
#include "backends/qt/views/QtScrollView.h"
#include "platform/UIKit/UIItems.h"

namespace tarni::qt {

class QtCellSwitch;
class QtTreeNode;

// What an item view draws for one item of its model.
class QtItemPart : public QtPart {
 public:
  QtItemPart(std::weak_ptr<const QtView> owner, platform::Class partClass,
             const QPersistentModelIndex& index)
      : QtPart(std::move(owner), partClass), index_(index) {}

  const QPersistentModelIndex& index() const { return index_; }
  // The visible part, so that the middle of what stands at the edge can be clicked.
  QRect shape() const final;
  bool isUserInteractionEnabled() const override;
  std::optional<std::string> accessibilityHint() const override { return std::nullopt; }

 protected:
  bool exists() const final { return index_.isValid(); }
  // In the viewport.
  virtual QRect placeIn(const QAbstractItemView& view) const = 0;
  // Null when the item is no longer there.
  QAbstractItemView* itemView() const { return static_cast<QAbstractItemView*>(widget()); }
  // What the view shows for the item.
  std::optional<std::string> text() const;

 private:
  const QPersistentModelIndex index_;
};

class QtCell final : public QtItemPart,
                     public platform::UITableViewCell,
                     public platform::UIItemCell {
 public:
  using QtItemPart::QtItemPart;

  // The check box that is drawn in the cell, another view that stands above it; null when there is
  // none that could be clicked.
  std::shared_ptr<QtCellSwitch> checkBox() const;
  // What opens and closes the row of a tree, before its text; null when there is nothing below it.
  std::shared_ptr<QtTreeNode> node() const;

  platform::ItemPlace place() const override;
  std::optional<bool> isSelected() const override;
  std::optional<bool> isChecked() const override;
  std::optional<bool> isExpanded() const override;
  platform::Task<void> setExpanded(bool expanded) override;
  // The model is told, with a value of the kind that it has.
  platform::Task<void> setCellValue(std::string value) override;

  std::optional<std::string> cellText() const override { return text(); }
  // The check mark, when the cell has one.
  std::optional<std::string> accessibilityValue() const override;
  std::optional<std::string> accessibilityLabel() const override;
  std::optional<std::string> accessibilityHint() const override;

 protected:
  QRect placeIn(const QAbstractItemView& view) const override;

 private:
  mutable std::shared_ptr<QtCellSwitch> checkBox_;
  mutable std::shared_ptr<QtTreeNode> node_;
};

class QtCellSwitch final : public QtItemPart,
                           public platform::UIControl,
                           public platform::UISwitch {
 public:
  QtCellSwitch(std::weak_ptr<const QtView> owner, const QPersistentModelIndex& index);

  bool isOn() const override;
  // As by a click: the model is told.
  platform::Task<void> setOn(bool on) override;
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override;
  std::optional<std::string> accessibilityValue() const override { return std::nullopt; }
  // The cell's text.
  std::optional<std::string> accessibilityLabel() const override { return text(); }

 protected:
  QRect placeIn(const QAbstractItemView& view) const override;
};

class QtTreeNode final : public QtItemPart, public platform::UIControl, public platform::UIButton {
 public:
  QtTreeNode(std::weak_ptr<const QtView> owner, const QPersistentModelIndex& index);

  // Also in a row that is disabled.
  bool isUserInteractionEnabled() const override;
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override;
  // The row's text: a click changes the state, and the node is the same before and after.
  std::optional<std::string> currentTitle() const override { return text(); }
  std::optional<bool> isExpanded() const override;
  std::optional<std::string> accessibilityValue() const override;
  std::optional<std::string> accessibilityLabel() const override { return currentTitle(); }

 protected:
  QRect placeIn(const QAbstractItemView& view) const override;
};

class QtItemView final : public QtScrollView, public platform::UIItems {
 public:
  using QtScrollView::QtScrollView;

  long numberOfRows() const override;
  long numberOfColumns() const override;
  platform::Task<bool> scrollToText(std::string text) override;

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
