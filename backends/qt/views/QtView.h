// QtView: the view of one widget. A top-level widget is a view of the kind UIWindow, and a control
// that is one stands in a window of its own (QtSoleWindow.h). The kinds of
// widgets add to it in QtControls.h, QtScrollView.h, QtItemView.h and QtBars.h. GUI thread.
//
// The viewport of a scroll area is not a view of its own: what stands in it are the scroll area's
// subviews, as in UIKit.
#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>
#include <vector>

#include "backends/qt/views/QtKind.h"
#include "backends/qt/views/QtNativeWindow.h"
#include "backends/qt/views/QtViewBase.h"
#include "backends/qt/views/ViewList.h"

namespace tarni::qt {

class QtView : public QtViewBase, public QtNativeWindow {
 public:
  QtView(QWidget& widget, Kind kind);

  QWidget* widget() const final { return widget_; }
  QRect shape() const override;

  // True for a top-level widget that is a control itself.
  bool isInSoleWindow() const;

  platform::Class getClass() const final;
  platform::UIViewRef superview() const final;
  std::span<const platform::UIViewRef> subviews() const final;
  platform::CGRect frame() const final;
  platform::UIViewRef hitTest(platform::CGPoint point) const final;

  bool isHidden() const final;
  bool isOpaque() const final;
  bool isUserInteractionEnabled() const final;
  bool isFirstResponder() const override;
  // As in UIKit, text inputs only. Other widgets take the focus by being clicked, and giving it to
  // them once more would take it away from where the program put it in answer to the click.
  bool canBecomeFirstResponder() const final;
  platform::Task<void> becomeFirstResponder() final;

  std::optional<std::string> accessibilityIdentifier() const final;
  std::optional<std::string> accessibilityValue() const final;
  std::optional<std::string> accessibilityLabel() const final;
  std::optional<std::string> accessibilityHint() const final;

 protected:
  QWindow* ownWindow() const final;
  // The kind while the view is not a window; some change it with their contents.
  virtual Kind kind() const { return kind_; }
  // The child whose children are taken for this view's own.
  virtual const QWidget* transparentChild() const { return nullptr; }
  // What the widget draws itself and people take for things of its own, back to front.
  virtual void appendParts(std::vector<platform::UIViewRef>&) const {}
  // The part at that point of the widget, or null.
  virtual platform::UIViewRef partAt(const QPoint&) const { return nullptr; }

 private:
  // Calls `visit` for the widgets that are subviews until it answers false.
  template <typename Visit>
  bool everySubwidget(Visit&& visit) const;
  bool isUpToDate() const;
  bool isWindow() const;
  // The rest of the screen while the widget is the popup that holds the user, otherwise null.
  platform::UIViewRef outside() const;

  const QPointer<QWidget> widget_;
  mutable platform::Class class_;
  mutable ViewList subviews_;
  const Kind kind_;
  mutable Kind classKind_;
};

}  // namespace tarni::qt
