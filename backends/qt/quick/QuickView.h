// QuickView: the view of one item. The kinds of items add to it in QuickControls.h. GUI thread.
#pragma once

#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>

#include "backends/qt/quick/QuickKind.h"
#include "backends/qt/views/QtViewCore.h"
#include "backends/qt/views/ViewList.h"

namespace tarni::qt {

// Makes the list that of what stands in the item; null for none.
std::span<const platform::UIViewRef> renewSubviews(ViewList& list, const QQuickItem* parent);

class QuickView : public QtViewCore {
 public:
  QuickView(QQuickItem& item, QuickKind kind);

  // Null when it has gone.
  QQuickItem* item() const { return item_; }
  // What draws the item's whole scene, when a widget does.
  QWidget* widget() const final;
  QWindow* nativeWindow() const final;
  bool takesTouches() const final;
  std::unique_ptr<QtBorder> makeBorder() const final;

  platform::Class getClass() const override { return class_; }
  platform::UIViewRef superview() const final;
  std::span<const platform::UIViewRef> subviews() const final;
  platform::UIWindowRef window() const final;

  platform::CGRect bounds() const final;
  platform::CGRect frame() const final;
  // How it is scaled and turned in its superview; where it stands is in its frame.
  platform::CGAffineTransform transform() const final;
  platform::CGPoint convertPointToWindow(platform::CGPoint point) const final;
  platform::CGPoint convertPointFromWindow(platform::CGPoint point) const final;
  platform::UIViewRef hitTest(platform::CGPoint point) const final;

  bool isHidden() const final;
  bool isOpaque() const final { return false; }
  bool clipsToBounds() const final;
  bool isUserInteractionEnabled() const final;
  bool isFirstResponder() const final;
  bool canBecomeFirstResponder() const final;
  platform::Task<void> becomeFirstResponder() final;
  std::span<const platform::Class> gestureRecognizers() const final;

  std::optional<std::string> accessibilityIdentifier() const final;
  std::optional<std::string> accessibilityLanguage() const final;
  std::optional<std::string> accessibilityValue() const final;
  std::optional<std::string> accessibilityLabel() const final;
  std::optional<std::string> accessibilityHint() const final;

  platform::Task<platform::UIImageRef> drawViewHierarchy() final;

 protected:
  bool canBeFound() const final;
  // The item's property as text; empty for one that it does not have.
  QString text(const char* property) const;

 private:
  // The rectangle that the view has for everybody else, in the item's coordinates (QuickReach.h).
  QRectF part() const;

  const QPointer<QQuickItem> item_;
  const platform::Class class_;
  mutable ViewList subviews_;
};

}  // namespace tarni::qt
