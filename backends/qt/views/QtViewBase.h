// QtViewBase: what every view that a widget draws has: that widget and a rectangle of it. A QtView
// is a whole widget, a QtPart something that a widget draws (a row, a tab, a menu entry). GUI
// thread.
#pragma once

#include <QtCore/QRect>
#include <memory>

#include "backends/qt/views/QtViewCore.h"

namespace tarni::qt {

class QtViewBase : public QtViewCore {
 public:
  // The view's rectangle in that widget's coordinates; empty when it has gone.
  virtual QRect shape() const = 0;
  // What of it is on screen, where the widget and those above it do not clip it away: the rectangle
  // that the view has for everybody else. The whole shape while the widget is hidden.
  virtual QRect shownShape() const;

  platform::UIWindowRef window() const final;
  QWindow* nativeWindow() const final;
  std::unique_ptr<QtBorder> makeBorder() const final;

  platform::CGRect bounds() const final;
  platform::CGPoint convertPointToWindow(platform::CGPoint point) const final;
  platform::CGPoint convertPointFromWindow(platform::CGPoint point) const final;

  // The toolkit clips every widget to its parent.
  bool clipsToBounds() const final { return true; }
  std::optional<std::string> accessibilityLanguage() const final;
  platform::Task<platform::UIImageRef> drawViewHierarchy() final;

 protected:
  bool canBeFound() const final;

 private:
  QPoint originInWindow() const;
};

platform::CGRect toCGRect(const QRect& rect);
// The pixel that a point lies in.
QPoint toQPoint(platform::CGPoint point);

}  // namespace tarni::qt
