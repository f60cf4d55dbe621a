// QtInputWatch: shows the agent's observer what a person does: the events of the window system, and
// the texts that input methods commit. While nobody observes it looks at nothing. GUI thread.
#pragma once

#include <qpa/qwindowsysteminterface_p.h>
#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtGui/QWindow>

#include <unordered_map>

#include "platform/UIKit/InputObserver.h"

namespace tarni::qt {

class QtInputWatch : public QObject {
 public:
  // Null ends it.
  void setObserver(platform::InputObserver* observer);

  // Before Qt processes it.
  void see(const QWindowSystemInterfacePrivate::WindowSystemEvent& event);
  // The first finger on a touch screen; a press, a move or a release.
  void seeFinger(platform::InputKind kind, QWindow* window, QPointF global, unsigned long time);
  // Something has opened because the pointer rests on the view.
  void pointedAt(const platform::UIViewRef& view);

  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  using Interface = QWindowSystemInterfacePrivate;

  void seeMouse(const Interface::MouseEvent& event);
  void seePointer(platform::InputEvent& event, QWindow* window, QPointF local, QPointF global);
  void seeWheel(const Interface::WheelEvent& event);
  void seeKey(const Interface::KeyEvent& event);
  void noteSizes();
  bool isAnswer(const Interface::GeometryChangeEvent& event) const;
  void seeResize(const Interface::GeometryChangeEvent& event);
  void show(const platform::InputEvent& event);
  void countClicks(platform::InputEvent& event, QPointF global);
  double uptimeOf(unsigned long time);

  platform::InputObserver* observer_ = nullptr;
  Qt::MouseButtons buttons_;
  QPointer<QWindow> pressed_;
  struct {
    QPointer<QWindow> window;
    QPointF global;
  } pointer_;
  // Of the windows when the thread last waited; what was asked for counts.
  std::unordered_map<const QWindow*, QSize> sizes_;
  QMetaObject::Connection waiting_;
  struct {
    platform::PointerButton button{};
    double time = 0;
    QPointF global;
    int clicks = 0;
  } lastPress_;
  double lastMouse_ = 0;  // when its latest event was that was shown
  double clock_ = 0;      // what the devices' clock is behind systemUptime; 0 until it is known
};

}  // namespace tarni::qt
