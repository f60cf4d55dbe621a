// BorderOverlay: draws the border of one view's layer, above everything else in the view's window.
//
// It must not be felt: it takes no mouse and no focus, stands in no walk, and the window is not
// told of it as a child, because some windows (a splitter) take every child that they are told of
// into their layout. It follows its view by looking where it is a few times a second; it is up for
// a second or so. GUI thread.
#pragma once

#include <QtCore/QBasicTimer>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>
#include <memory>

#include "backends/qt/QtLayer.h"

namespace tarni::qt {

class QtViewBase;

class BorderOverlay final : public QWidget {
 public:
  BorderOverlay(QWidget& window, std::weak_ptr<const QtViewBase> view);

  // Shows the border where its view is now.
  void setBorder(double width, const platform::CGColor& color);
  // Off the screen at once. Deleted later, which may be long after, because a view goes while its
  // window is deleting its children.
  void end();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void follow();

  std::weak_ptr<const QtViewBase> view_;
  QRect border_;  // the view's rectangle in this widget, which is as large as its visible part
  double width_ = 0;
  QColor color_;
  QBasicTimer follower_;
};

// Makes the overlay of a view, and makes it anew when the window that it was in has gone.
class WidgetBorder final : public QtBorder {
 public:
  explicit WidgetBorder(std::weak_ptr<const QtViewBase> view) : view_(std::move(view)) {}
  ~WidgetBorder() override;

  void setBorder(double width, const platform::CGColor& color) override;

 private:
  const std::weak_ptr<const QtViewBase> view_;
  QPointer<BorderOverlay> overlay_;
};

}  // namespace tarni::qt
