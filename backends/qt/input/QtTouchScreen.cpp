#include "backends/qt/input/QtTouchScreen.h"

#include <QtGui/private/qhighdpiscaling_p.h>
#include <qpa/qwindowsysteminterface_p.h>
#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>
#include <QtGui/QStyleHints>
#include <QtGui/QTouchEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>
#include <algorithm>

#include "backends/qt/input/NativeWindows.h"
#include "backends/qt/input/QtCarriedDrag.h"

#if QT_VERSION_MAJOR >= 6
#include <QtGui/QPointingDevice>
#else
#include <QtGui/QTouchDevice>
#endif

namespace tarni::qt {
namespace {

using State = QtTouchScreen::State;

// The radii of a synthesized finger are 5 points.
constexpr double kDiameter = 10;
constexpr int kFingers = 10;

#if QT_VERSION_MAJOR >= 6
using Device = QPointingDevice;
using NativeState = QEventPoint::State;
constexpr NativeState kNativeStates[] = {NativeState::Pressed, NativeState::Updated,
                                         NativeState::Stationary, NativeState::Released};

Device* makeDevice() {
  using Capability = QInputDevice::Capability;
  constexpr qint64 kSystemId = 0x7461726e;
  auto* const made = new QPointingDevice(
      QStringLiteral("tarni"), kSystemId, QInputDevice::DeviceType::TouchScreen,
      QPointingDevice::PointerType::Finger, Capability::Position | Capability::Area, kFingers, 0);
  QWindowSystemInterface::registerInputDevice(made);
  return made;
}
#else
using Device = QTouchDevice;
using NativeState = Qt::TouchPointState;
constexpr NativeState kNativeStates[] = {Qt::TouchPointPressed, Qt::TouchPointMoved,
                                         Qt::TouchPointStationary, Qt::TouchPointReleased};

Device* makeDevice() {
  auto* const made = new QTouchDevice;
  made->setName(QStringLiteral("tarni"));
  made->setType(QTouchDevice::TouchScreen);
  made->setCapabilities(QTouchDevice::Position | QTouchDevice::Area);
  made->setMaximumTouchPoints(kFingers);
  QWindowSystemInterface::registerTouchDevice(made);
  return made;
}
#endif

Device* knownDevice = nullptr;

Device& device() {
  if (!knownDevice) knownDevice = makeDevice();
  return *knownDevice;
}

QPointF globalPosition(const QWindow& window, QPointF position) {
  return originOnScreen(window) + position;
}

// Presses are far enough apart never to become a double click.
unsigned long nextTimestamp(bool isPress) {
  static unsigned long lastPress = 0;
  static unsigned long ahead = 0;
  const auto now = static_cast<unsigned long>(QWindowSystemInterfacePrivate::eventTime.elapsed());
  if (!isPress) return now + ahead;
  const auto interval =
      static_cast<unsigned long>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
  const unsigned long earliest = lastPress + interval + 1;
  if (lastPress != 0 && now + ahead < earliest) ahead = earliest - now;
  lastPress = now + ahead;
  return lastPress;
}

QWindowSystemInterface::TouchPoint nativePoint(const QWindow& window,
                                               const QtTouchScreen::Point& point) {
  QWindowSystemInterface::TouchPoint native;
  native.id = point.identifier;
  native.state = kNativeStates[static_cast<int>(point.state)];
  native.pressure = point.state == State::Released ? 0 : 1;
  native.area = QRectF(0, 0, kDiameter, kDiameter);
  native.area.moveCenter(QHighDpi::toNativePixels(globalPosition(window, point.position), &window));
  return native;
}

// What is told of the scene of Qt Quick there: its window, or the widget that draws it; null for
// none.
QObject* sceneAt(QWindow& window, QPointF position) {
  if (!window.inherits("QWidgetWindow")) return &window;
  QWidget* const shell = QWidget::find(window.winId());
  if (!shell) return nullptr;
  QWidget* const child = shell->childAt(position.toPoint());
  QWidget* const touched = child ? child : shell;
  return touched->inherits("QQuickWidget") ? touched : nullptr;
}

// Qt Quick takes what a finger rests on while a frame is drawn for hovered, and does not end that
// when the finger is lifted, unless a frame is drawn during the next touch. A menu bar whose title
// it takes for hovered keeps a menu for open that has closed, and the next tap does not open it.
// Comes in time even if lifting the finger starts a nested loop.
void endHoverSoon(QObject& scene) {
  const auto leave = [&scene] {
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(&scene, &event);
  };
  QMetaObject::invokeMethod(&scene, leave, Qt::QueuedConnection);
}

}  // namespace

void QtTouchScreen::touch(QWindow& window, const std::vector<Point>& points) {
  QList<QWindowSystemInterface::TouchPoint> native;
  for (const Point& point : points) native.append(nativePoint(window, point));
  const bool isPress = std::any_of(points.begin(), points.end(), [](const Point& point) {
    return point.state == State::Pressed;
  });
  const bool isLast = std::all_of(points.begin(), points.end(), [](const Point& point) {
    return point.state == State::Released;
  });
  QObject* const scene = isLast ? sceneAt(window, points.front().position) : nullptr;
  if (scene) endHoverSoon(*scene);
  carryDragsAt(window, points.front().position);
  if (isLast) leaveDrags();
  QWindowSystemInterface::handleTouchEvent<QWindowSystemInterface::SynchronousDelivery>(
      &window, nextTimestamp(isPress), &device(), native);
}

void QtTouchScreen::mouse(QWindow& window, const Point& point) {
  const bool isPress = point.state == State::Pressed;
  const bool isMove = point.state == State::Moved;
  const auto type = isPress  ? QEvent::MouseButtonPress
                    : isMove ? QEvent::MouseMove
                             : QEvent::MouseButtonRelease;
  QWindowSystemInterfacePrivate::MouseEvent event(
      &window, nextTimestamp(isPress), point.position, globalPosition(window, point.position),
      point.state == State::Released ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier,
      isMove ? Qt::NoButton : Qt::LeftButton, type);
  carryDragsAt(window, point.position);
  if (point.state == State::Released) leaveDrags();
  process(event);
}

bool QtTouchScreen::isOwn(const void* device) {
  return device && device == knownDevice;
}

}  // namespace tarni::qt
