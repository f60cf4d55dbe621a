#include "backends/qt/quick/QuickBorder.h"

#include <QtCore/QBasicTimer>
#include <QtGui/QPainter>
#include <QtQuick/QQuickPaintedItem>
#include <QtQuick/QQuickWindow>

#include "backends/qt/quick/QuickTree.h"

namespace tarni::qt {
namespace {

constexpr int kFollowMilliseconds = 40;
// Popups stand at a million and one.
constexpr double kAboveAll = 1e9;

}  // namespace

class QuickBorderItem final : public QQuickPaintedItem {
 public:
  explicit QuickBorderItem(QQuickItem& followed) : followed_(&followed) {
    hideFromWalks(*this);
    setZ(kAboveAll);
    setParentItem(followed.window()->contentItem());
    follower_.start(kFollowMilliseconds, this);
  }

  void setBorder(double width, const QColor& color) {
    width_ = width;
    color_ = color;
    follow();
    update();
  }

  // Off the screen at once. Deleted later, which may be long after, because a view goes while its
  // scene is deleting its items.
  void end() {
    follower_.stop();
    setVisible(false);
    deleteLater();
  }

  void paint(QPainter* painter) override {
    QPen pen(color_, width_);
    pen.setJoinStyle(Qt::MiterJoin);
    painter->setPen(pen);
    const double inset = width_ / 2;
    painter->drawRect(boundingRect().adjusted(inset, inset, -inset, -inset));
  }

 protected:
  void timerEvent(QTimerEvent*) override { follow(); }

 private:
  void follow() {
    const bool isInScene = followed_ && followed_->window() == window();
    setVisible(isInScene && followed_->isVisible());
    if (!isInScene) return;
    const QRectF rect = followed_->mapRectToScene({{}, followed_->size()});
    setPosition(rect.topLeft());
    setSize(rect.size());
  }

  const QPointer<QQuickItem> followed_;
  double width_ = 0;
  QColor color_;
  QBasicTimer follower_;
};

QuickBorder::~QuickBorder() {
  if (border_) border_->end();
}

void QuickBorder::setBorder(double width, const platform::CGColor& color) {
  if (!item_ || !item_->window()) return;
  if (!border_) border_ = new QuickBorderItem(*item_);
  border_->setBorder(
      width, QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                              static_cast<float>(color.blue), static_cast<float>(color.alpha)));
}

}  // namespace tarni::qt
