// The views of the items of a QGraphicsView: those that are seen, in the order in which they lie on
// each other, each a subview of the graphics view's. GUI thread.
//
// An item is not an object that tells of its end. It ends for its view when it leaves the scene;
// one that is put back is another view.
#pragma once

#include <unordered_map>

#include "backends/qt/views/QtPart.h"
#include "backends/qt/views/QtScrollView.h"

QT_BEGIN_NAMESPACE
class QGraphicsItem;
class QGraphicsView;
QT_END_NAMESPACE

namespace tarni::qt {

// An item, or null once it has left its scene.
class QtSceneItem {
 public:
  explicit QtSceneItem(QGraphicsItem& item);
  ~QtSceneItem();
  QtSceneItem(const QtSceneItem&) = delete;
  QtSceneItem& operator=(const QtSceneItem&) = delete;

  QGraphicsItem* get() const { return item_; }

 private:
  QGraphicsItem* item_;
};

class QtGraphicsItem : public QtPart {
 public:
  QtGraphicsItem(std::weak_ptr<const QtView> owner, platform::Class itemClass, QGraphicsItem& item)
      : QtPart(std::move(owner), itemClass), item_(item) {}

  // Null when it is no longer there.
  QGraphicsItem* item() const { return item_.get(); }

  // The smallest upright rectangle round what is seen of the item.
  QRect shape() const override;
  bool isHidden() const override;
  bool isUserInteractionEnabled() const override;
  std::optional<std::string> accessibilityIdentifier() const override;
  std::optional<std::string> accessibilityValue() const override { return std::nullopt; }
  // The tool tip, otherwise what a widget in it is called.
  std::optional<std::string> accessibilityLabel() const override;
  std::optional<std::string> accessibilityHint() const override { return std::nullopt; }

 protected:
  bool exists() const override;

 private:
  const QtSceneItem item_;
};

class QtGraphicsText final : public QtGraphicsItem, public platform::UILabel {
 public:
  using QtGraphicsItem::QtGraphicsItem;
  std::optional<std::string> labelText() const override;
};

// An item that people can select, move or type in, and a widget in a scene.
class QtGraphicsControl final : public QtGraphicsItem, public platform::UIControl {
 public:
  using QtGraphicsItem::QtGraphicsItem;
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override;
};

class QtGraphicsView final : public QtScrollView {
 public:
  using QtScrollView::QtScrollView;

 protected:
  void appendParts(std::vector<platform::UIViewRef>& views) const override;
  platform::UIViewRef partAt(const QPoint& point) const override;

 private:
  QGraphicsView& graphicsView() const;
  void renewItems() const;
  std::shared_ptr<QtGraphicsItem> makeItem(QGraphicsItem& item) const;

  mutable std::vector<std::shared_ptr<QtGraphicsItem>> items_;  // back to front
  mutable std::unordered_map<const QGraphicsItem*, std::shared_ptr<QtGraphicsItem>> known_;
};

}  // namespace tarni::qt
