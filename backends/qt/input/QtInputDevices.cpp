#include "backends/qt/input/QtInputDevices.h"

#include <QtGui/QGuiApplication>
#include <QtWidgets/QApplication>
#include <cmath>
#include <utility>

#include "backends/qt/input/NativeWindows.h"
#include "backends/qt/input/QtEventHook.h"
#include "backends/qt/views/ViewRegistry.h"
#include "platform/Foundation/NSException.h"
#include "platform/Platform.h"

namespace tarni::qt {
namespace {

using platform::PointerButton;

Qt::MouseButton nativeButton(PointerButton button) {
  for (const auto& [native, known] : kMouseButtons) {
    if (known == button) return native;
  }
  return Qt::NoButton;
}

int angleOf(double notches) {
  return static_cast<int>(std::lround(-notches * kAnglePerNotch));
}

// Null when none has it, and when a modal window has come that will: the one before it keeps the
// keyboard until the window system gives it on, and would swallow what comes.
QWindow* windowInFocus() {
  QWindow* const window = QGuiApplication::focusWindow();
  return window && isBlockedByModal(*topLevelOf(window)) ? nullptr : window;
}

QWindow& windowWithKeyboard() {
  QWindow* window = windowInFocus();
  if (!window) window = nativeWindowOf(platform::current().application->keyWindow());
  if (!window) {
    throw platform::NSException(platform::NSGenericException, "No window has the keyboard");
  }
  return *window;
}

// What a press there has to make the active window first; null for nothing.
platform::UIWindowRef windowToActivate(QWindow* pressed) {
  QWindow* const top = topLevelOf(pressed);
  if (!top || QApplication::activePopupWidget() || isBlockedByModal(*top)) return nullptr;
  if (top->flags().testFlag(Qt::WindowDoesNotAcceptFocus)) return nullptr;
  if (topLevelOf(QGuiApplication::focusWindow()) == top) return nullptr;
  return viewOfWindow(top);
}

// As when a dialog has closed and no window manager gives the keyboard on: keys reach the key
// window all the same, but the program's shortcuts take an active one.
platform::Task<void> activateSome() {
  if (windowInFocus()) co_return;
  const platform::UIWindowRef key = platform::current().application->keyWindow();
  if (key) co_await platform::current().application->makeKeyWindow(key);
}

}  // namespace

platform::Task<void> QtInputDevices::movePointer(platform::UIWindowRef window,
                                                 platform::CGPoint point) {
  const QPointer<QWindow> native = nativeWindowOf(window);
  if (!native) {
    throw platform::NSException(platform::NSInvalidArgumentException, "The window has gone");
  }
  std::function<void()> move = [this, native, position = QPointF(point.x, point.y)] {
    if (native) devices_.mouse.moveTo(*native, position, devices_.keyboard.modifiers());
  };
  co_await perform(std::move(move));
}

platform::Task<void> QtInputDevices::setButton(PointerButton button, bool isDown) {
  const platform::UIWindowRef inactive =
      isDown ? windowToActivate(devices_.mouse.target()) : nullptr;
  if (inactive) co_await platform::current().application->makeKeyWindow(inactive);
  std::function<void()> set = [this, button, isDown] {
    devices_.mouse.setButton(nativeButton(button), isDown, devices_.keyboard.modifiers());
  };
  co_await perform(std::move(set));
}

platform::Task<void> QtInputDevices::turnWheel(double right, double down) {
  for (const QPoint angle : {QPoint(angleOf(right), 0), QPoint(0, angleOf(down))}) {
    std::function<void()> turn = [this, angle] {
      devices_.mouse.turnWheel(angle, devices_.keyboard.modifiers());
    };
    if (!angle.isNull()) co_await perform(std::move(turn));
  }
}

platform::Task<void> QtInputDevices::setKey(std::string name, bool isDown) {
  if (isDown) co_await activateSome();
  co_await perform(settingKey(QtKeyboard::named(name), isDown));
}

platform::Task<void> QtInputDevices::pressKey(std::string name) {
  co_await activateSome();
  const QtKeyboard::Key key = QtKeyboard::named(name);
  std::vector<std::function<void()>> works = {noted(settingKey(key, true)),
                                              noted(settingKey(key, false))};
  co_await performAsInput(std::move(works), doer_);
}

platform::Task<void> QtInputDevices::commitText(std::string text) {
  std::function<void()> commit = [this, text = QString::fromStdString(text)] {
    devices_.keyboard.commit(windowWithKeyboard(), text);
  };
  co_await perform(std::move(commit));
}

platform::Task<void> QtInputDevices::perform(std::function<void()> work) const {
  return performAsInput(noted(std::move(work)), doer_);
}

std::function<void()> QtInputDevices::noted(std::function<void()> work) const {
  return [doer = doer_, work = std::move(work)] {
    if (doer == Doer::Agent) noteInputOfAgent();
    work();
  };
}

std::function<void()> QtInputDevices::settingKey(const QtKeyboard::Key& key, bool isDown) const {
  return [this, key, isDown] { devices_.keyboard.setKey(windowWithKeyboard(), key, isDown); };
}

}  // namespace tarni::qt
