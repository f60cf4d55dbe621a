// QtViewBase: what every view of this backend has: a widget that draws it and a rectangle of that
// widget. A QtView is a whole widget, a QtPart something that a widget draws (a row, a tab, a menu
// entry). GUI thread.
#pragma once

#include <QtCore/QRect>
#include <memory>

#include "backends/qt/QtLayer.h"
#include "platform/UIKit/UIView.h"

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace tarni::qt {

class QtViewBase : public platform::UIView {
 public:
  // The widget that draws the view; null when it has gone.
  virtual QWidget* widget() const = 0;
  // The view's rectangle in that widget's coordinates; empty when it has gone.
  virtual QRect shape() const = 0;

  platform::UIWindowRef window() const final;
  platform::CALayer& layer() const final { return layer_; }

  platform::CGRect bounds() const final;
  platform::CGPoint center() const final;
  platform::CGAffineTransform transform() const final { return {}; }
  platform::CGPoint convertPointToWindow(platform::CGPoint point) const final;
  platform::CGPoint convertPointFromWindow(platform::CGPoint point) const final;

  // The toolkit clips every widget to its parent.
  bool clipsToBounds() const final { return true; }
  std::span<const platform::Class> gestureRecognizers() const final { return {}; }
  long tag() const final { return 0; }
  std::optional<std::string> accessibilityLanguage() const final;
  platform::UIViewRef valueForKey(std::string_view) const final { return nullptr; }
  platform::UIViewRef instanceVariable(std::string_view) const final { return nullptr; }
  platform::Task<platform::UIImageRef> drawViewHierarchy() final;

 private:
  QPoint originInWindow() const;

  mutable QtLayer layer_{*this};
};

platform::CGRect toCGRect(const QRect& rect);
// The pixel that a point lies in.
QPoint toQPoint(platform::CGPoint point);

}  // namespace tarni::qt
