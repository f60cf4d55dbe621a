#include "backends/qt/drawing/BorderOverlay.h"

#include <QtGui/QPainter>

#include "backends/qt/program/OwnWidgets.h"

namespace tarni::qt {
namespace {

constexpr int kFollowMilliseconds = 40;

}  // namespace

BorderOverlay::BorderOverlay(QWidget& window, FindBorderedPart find) : find_(std::move(find)) {
  hideFromWalks(this);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAttribute(Qt::WA_NoSystemBackground);
  setFocusPolicy(Qt::NoFocus);
  d_ptr->sendChildEvents = false;
  setParent(&window);
  follower_.start(kFollowMilliseconds, this);
}

void BorderOverlay::setBorder(double width, const platform::CGColor& color) {
  width_ = width;
  color_ = QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
  follow();
  update();
}

void BorderOverlay::end() {
  follower_.stop();
  hide();
  deleteLater();
}

void BorderOverlay::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QPen pen(color_, width_);
  pen.setJoinStyle(Qt::MiterJoin);
  painter.setPen(pen);
  const double inset = width_ / 2;
  painter.drawRect(QRectF(border_).adjusted(inset, inset, -inset, -inset));
}

void BorderOverlay::timerEvent(QTimerEvent*) {
  follow();
}

void BorderOverlay::follow() {
  const auto [widget, whole, visible] = find_();
  if (!widget || !widget->isVisible()) {
    hide();
    return;
  }
  QWidget* const window = widget->window();
  if (window != parentWidget()) setParent(window);
  const QRect inWindow(widget->mapTo(window, visible.topLeft()), visible.size());
  const QRect border = whole.translated(-visible.topLeft());
  if (border != border_) update();
  border_ = border;
  setGeometry(inWindow);
  if (window->children().last() != this) raise();
  setVisible(!visible.isEmpty());
}

WidgetBorder::~WidgetBorder() {
  if (overlay_) overlay_->end();
}

void WidgetBorder::setBorder(double width, const platform::CGColor& color) {
  QWidget* const widget = find_().widget;
  if (!widget) return;
  if (!overlay_) overlay_ = new BorderOverlay(*widget->window(), find_);
  overlay_->setBorder(width, color);
}

}  // namespace tarni::qt
