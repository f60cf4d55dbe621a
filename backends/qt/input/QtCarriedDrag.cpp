#include "backends/qt/input/QtCarriedDrag.h"

#include <qpa/qplatformdrag.h>
#include <qpa/qwindowsysteminterface.h>

#include <QtGui/private/qdnd_p.h>
#include <QtCore/QEventLoop>
#include <QtCore/QMimeData>
#include <QtCore/QPointer>
#include <QtGui/QDrag>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <memory>
#include <utility>

#include "backends/qt/input/NativeWindows.h"
#include "backends/qt/views/ViewRegistry.h"

namespace tarni::qt {
namespace {

// Who leads the drags of QDragManager, which keeps it to itself: an explicit instantiation may
// name what is private.
QPlatformDrag* QDragManager::*leaderOfDrags();

template <QPlatformDrag* QDragManager::*Member>
struct Revealed {
  friend QPlatformDrag* QDragManager::*leaderOfDrags() { return Member; }
};
template struct Revealed<&QDragManager::m_platformDrag>;

QMouseEvent* copyOf(const QMouseEvent& event) {
#if QT_VERSION_MAJOR >= 6
  return event.clone();
#else
  return new QMouseEvent(event);
#endif
}

// Shows no picture under the pointer: it would be a window, and take the keyboard off screen.
class CarriedDrag final : public QObject, public QPlatformDrag {
 public:
  void pointerIsAt(QWindow& window, QPointF position) {
    QPlatformDrag*& leader = QDragManager::self()->*leaderOfDrags();
    if (leader != this) platforms_ = std::exchange(leader, this);
    isPointerDown_ = true;
    over_ = topLevelOf(&window);
    position_ = (originInTopLevel(&window) + position).toPoint();
  }
  // By the event that comes next, or by none when the finger was taken off for nothing.
  void pointerIsUp() {
    isPointerDown_ = false;
    if (loop_) QMetaObject::invokeMethod(loop_, &QEventLoop::quit, Qt::QueuedConnection);
  }

  Qt::DropAction drag(QDrag* drag) override {
    isCarried_ = isPointerDown_;
    if (isCarried_) return carry();
    return platforms_ ? platforms_->drag(drag) : Qt::IgnoreAction;
  }
  void cancelDrag() override {
    if (isCarried_) return end();
    if (platforms_) platforms_->cancelDrag();
  }
  bool ownsDragObject() const override {
    return !isCarried_ && platforms_ && platforms_->ownsDragObject();
  }

  bool eventFilter(QObject* receiver, QEvent* event) override {
    const bool isKey = event->type() == QEvent::KeyPress;
    if (isKey && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
      end();
      return true;
    }
    if (event->type() == QEvent::MouseMove) {
      move(*static_cast<QMouseEvent*>(event));
      return true;
    }
    if (event->type() != QEvent::MouseButtonRelease) return false;
    released_ = receiver;
    release_.reset(copyOf(*static_cast<QMouseEvent*>(event)));
    qApp->removeEventFilter(this);  // what is dropped may open a dialog
    if (isAccepted_) drop(*release_);
    end();
    return true;
  }

 private:
  // Until the pointer goes up. The program hears of that after its drag.
  Qt::DropAction carry() {
    action_ = Qt::IgnoreAction;
    isAccepted_ = false;
    QEventLoop loop;
    loop_ = &loop;
    qApp->installEventFilter(this);
    loop.exec();
    qApp->removeEventFilter(this);
    if (released_) QCoreApplication::postEvent(released_, release_.release());
    released_ = nullptr;
    return action_;
  }

  void move(const QMouseEvent& event) {
    if (over_ != entered_) leave();
    entered_ = over_;
    isAccepted_ =
        over_ && QWindowSystemInterface::handleDrag(over_, currentDrag()->mimeData(), position_,
                                                    currentDrag()->supportedActions(),
                                                    event.buttons(), event.modifiers())
                     .isAccepted();
  }

  void drop(const QMouseEvent& event) {
    if (!over_) return;
    entered_ = nullptr;
    action_ = QWindowSystemInterface::handleDrop(over_, currentDrag()->mimeData(), position_,
                                                 currentDrag()->supportedActions(), event.buttons(),
                                                 event.modifiers())
                  .acceptedAction();
  }

  void end() {
    leave();
    if (loop_) loop_->quit();
  }

  void leave() {
    if (entered_) {
      QWindowSystemInterface::handleDrag(entered_, nullptr, QPoint(), Qt::IgnoreAction, {}, {});
    }
    entered_ = nullptr;
  }

  QPlatformDrag* platforms_ = nullptr;
  bool isPointerDown_ = false;
  QPointer<QWindow> over_;  // that the pointer is over
  QPoint position_;

  // Of the drag that is carried, or was last.
  bool isCarried_ = false;
  QPointer<QEventLoop> loop_;
  QPointer<QWindow> entered_;  // that was told that the drag is over it
  bool isAccepted_ = false;
  Qt::DropAction action_ = Qt::IgnoreAction;
  QPointer<QObject> released_;  // that is to be told that the pointer went up
  std::unique_ptr<QMouseEvent> release_;
};

CarriedDrag& carriedDrag() {
  static auto& drag = *new CarriedDrag;
  return drag;
}

}  // namespace

void carryDragsAt(QWindow& window, QPointF position) {
  carriedDrag().pointerIsAt(window, position);
}

void leaveDrags() {
  carriedDrag().pointerIsUp();
}

}  // namespace tarni::qt
