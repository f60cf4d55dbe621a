// QtViewCore: what every view of this backend has, whatever draws it: a layer, and none of what the
// toolkit does not know. The views of widgets add to it in QtViewBase.h. GUI thread.
#pragma once

#include <QtCore/qglobal.h>

#include <memory>

#include "backends/qt/views/QtLayer.h"
#include "platform/UIKit/UIView.h"

QT_BEGIN_NAMESPACE
class QWidget;
class QWindow;
QT_END_NAMESPACE

namespace tarni::qt {

class QtViewCore : public platform::UIView {
 public:
  // The widget that draws the view; null when it has gone, and where no widget draws.
  virtual QWidget* widget() const = 0;
  // The top-level window of the window system that the view is shown in; null when it is in none.
  virtual QWindow* nativeWindow() const = 0;
  // False where the toolkit answers to the mouse alone.
  virtual bool takesTouches() const { return true; }
  // A border over the view, nothing drawn yet. Null when the view is in no window.
  virtual std::unique_ptr<QtBorder> makeBorder() const = 0;

  platform::CALayer& layer() const final { return layer_; }
  platform::CGAffineTransform transform() const override { return {}; }
  platform::CGPoint center() const final;
  std::span<const platform::Class> gestureRecognizers() const override { return {}; }
  long tag() const final { return 0; }
  platform::UIViewRef valueForKey(std::string_view) const override { return nullptr; }
  platform::UIViewRef instanceVariable(std::string_view) const override { return nullptr; }

 protected:
  // False for a view that no finger finds at its place: it is hidden or stands in a hidden one, or
  // what lies below it takes the touch.
  virtual bool canBeFound() const = 0;
  // `title`, and for a view that shows an icon only what a screen reader calls it, otherwise its
  // tool tip.
  std::optional<std::string> titleOrName(std::optional<std::string> title) const;

 private:
  mutable QtLayer layer_{*this};
};

}  // namespace tarni::qt
