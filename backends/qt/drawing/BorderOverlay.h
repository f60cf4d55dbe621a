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
#include <functional>

#include "backends/qt/drawing/QtBorder.h"

namespace tarni::qt {

// What a border goes round, in the coordinates of the widget that draws it.
struct BorderedPart {
  QWidget* widget = nullptr;  // null when it has gone
  QRect whole;
  QRect shown;  // what of it is seen
};
using FindBorderedPart = std::function<BorderedPart()>;

class BorderOverlay final : public QWidget {
 public:
  BorderOverlay(QWidget& window, FindBorderedPart find);

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

  const FindBorderedPart find_;
  QRect border_;  // the view's rectangle in this widget, which is as large as its visible part
  double width_ = 0;
  QColor color_;
  QBasicTimer follower_;
};

// Makes the overlay of a view, and makes it anew when the window that it was in has gone.
class WidgetBorder final : public QtBorder {
 public:
  explicit WidgetBorder(FindBorderedPart find) : find_(std::move(find)) {}
  ~WidgetBorder() override;

  void setBorder(double width, const platform::CGColor& color) override;

 private:
  const FindBorderedPart find_;
  QPointer<BorderOverlay> overlay_;
};

}  // namespace tarni::qt
