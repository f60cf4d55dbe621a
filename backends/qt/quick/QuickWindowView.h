// The views that scenes stand in: windows of Qt Quick, and widgets that show a scene. GUI thread.
#pragma once

#include <QtQuick/QQuickWindow>

#include "backends/qt/quick/QuickView.h"
#include "backends/qt/views/QtView.h"

namespace tarni::qt {

class QuickWindowView final : public QtViewCore, public QtNativeWindow {
 public:
  explicit QuickWindowView(QQuickWindow& window);

  QWidget* widget() const final { return nullptr; }
  QWindow* nativeWindow() const final { return window_; }
  std::unique_ptr<QtBorder> makeBorder() const final;

  platform::Class getClass() const final { return class_; }
  platform::UIViewRef superview() const final { return nullptr; }
  std::span<const platform::UIViewRef> subviews() const final;
  platform::UIWindowRef window() const final;

  platform::CGRect bounds() const final;
  platform::CGRect frame() const final;
  platform::CGPoint convertPointToWindow(platform::CGPoint point) const final { return point; }
  platform::CGPoint convertPointFromWindow(platform::CGPoint point) const final { return point; }
  platform::UIViewRef hitTest(platform::CGPoint point) const final;

  bool isHidden() const final { return !window_ || !window_->isVisible(); }
  bool canBeFound() const final { return !isHidden(); }
  bool isOpaque() const final { return window_ && window_->color().alpha() == 255; }
  bool clipsToBounds() const final { return true; }
  bool isUserInteractionEnabled() const final { return window_ != nullptr; }
  bool isFirstResponder() const final { return false; }
  bool canBecomeFirstResponder() const final { return false; }
  platform::Task<void> becomeFirstResponder() final;

  std::optional<std::string> accessibilityIdentifier() const final;
  std::optional<std::string> accessibilityLanguage() const final;
  std::optional<std::string> accessibilityValue() const final { return std::nullopt; }
  std::optional<std::string> accessibilityLabel() const final;
  std::optional<std::string> accessibilityHint() const final { return std::nullopt; }

  platform::Task<platform::UIImageRef> drawViewHierarchy() final;

 protected:
  QWindow* ownWindow() const final { return window_; }

 private:
  const QPointer<QQuickWindow> window_;  // null when it has gone
  const platform::Class class_;
  mutable ViewList subviews_;
};

// A QQuickWidget, or a widget that holds a window of Qt Quick: the items of the scene are its
// subviews.
class QuickHostView final : public QtView {
 public:
  using QtView::QtView;

 protected:
  void appendParts(std::vector<platform::UIViewRef>& views) const final;
  platform::UIViewRef partAt(const QPoint& point) const final;

 private:
  // Null while it shows none.
  QQuickWindow* scene() const;

  mutable ViewList items_;
};

// A view for a widget that shows a scene, null for all others.
std::shared_ptr<QtView> makeHostView(QWidget& widget);

}  // namespace tarni::qt
