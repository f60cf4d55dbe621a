#include "backends/qt/QtApplication.h"

#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <algorithm>

#include "backends/posix/TouchRecord.h"
#include "backends/qt/input/NativeWindows.h"
#include "backends/qt/input/QtEventHook.h"
#include "backends/qt/input/QtSpot.h"
#include "backends/qt/program/InputQueue.h"
#include "backends/qt/program/LoopWatch.h"
#include "backends/qt/program/QtProgram.h"
#include "backends/qt/program/Stillness.h"
#include "backends/qt/views/QtPaintWatch.h"
#include "backends/qt/views/QtPopup.h"
#include "backends/qt/views/ViewRegistry.h"

namespace tarni::qt {

using platform::UIWindowRef;

namespace {

// What a user can work with: no tool tip and no splash screen.
bool isForUser(const QWindow& window) {
  return window.isVisible() && window.type() != Qt::ToolTip && window.type() != Qt::SplashScreen;
}

UIWindowRef shownWindow(QWidget* widget) {
  return widget && widget->isVisible() ? windowOfWidget(widget) : nullptr;
}

UIWindowRef shownWindow(QWindow* window) {
  QWindow* const top = topLevelOf(window);
  return top && isForUser(*top) ? viewOfWindow(top) : nullptr;
}

// The popup that was opened last among those that no widget draws.
UIWindowRef popupWithoutWidget() {
  const QWindowList windows = QGuiApplication::topLevelWindows();
  for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
    if ((*window)->type() != Qt::Popup) continue;
    if (UIWindowRef view = shownWindow(*window); view && !widgetOfView(view)) return view;
  }
  return nullptr;
}

// A popup may refuse.
void closePopups() {
  constexpr int kMostNested = 16;
  for (int closed = 0; closed < kMostNested; ++closed) {
    QWidget* const popup = QApplication::activePopupWidget();
    if (!popup) return;
    popup->close();
  }
}

constexpr int kLooksForFocus = 20;
constexpr double kPauseBetweenLooks = 0.02;  // seconds

}  // namespace

UIWindowRef QtApplication::keyWindow() const {
  if (UIWindowRef window = shownWindow(openPopup())) return window;
  if (UIWindowRef window = popupWithoutWidget()) return window;
  if (UIWindowRef window = chosenWindow()) return window;
  if (UIWindowRef window = shownWindow(QApplication::activeModalWidget())) return window;
  if (UIWindowRef window = shownWindow(QGuiApplication::modalWindow())) return window;
  if (UIWindowRef window = shownWindow(QApplication::activeWindow())) return window;
  if (UIWindowRef window = shownWindow(QGuiApplication::focusWindow())) return window;
  const std::vector<UIWindowRef> windows = windowsWithKeyWindow();
  return windows.empty() ? nullptr : windows.back();
}

std::vector<UIWindowRef> QtApplication::windowsWithKeyWindow() const {
  std::vector<UIWindowRef> windows;
  for (QWindow* const window : QGuiApplication::topLevelWindows()) {
    if (!isForUser(*window)) continue;
    if (UIWindowRef view = viewOfWindow(window)) windows.push_back(std::move(view));
  }
  return windows;
}

UIWindowRef QtApplication::chosenWindow() const {
  if (!chosen_ || QGuiApplication::focusWindow() != focusedThen_) return nullptr;
  return isBlockedByModal(*chosen_) ? nullptr : shownWindow(chosen_.data());
}

std::vector<UIWindowRef> QtApplication::windowsThatTakeInput() const {
  std::vector<UIWindowRef> windows;
  if (UIWindowRef key = keyWindow()) windows.push_back(std::move(key));
  const QWindowList opened = QGuiApplication::topLevelWindows();
  for (auto window = opened.rbegin(); window != opened.rend(); ++window) {
    UIWindowRef view = isBlockedByModal(**window) ? nullptr : shownWindow(*window);
    if (view && view != windows.front()) windows.push_back(std::move(view));
  }
  return windows;
}

platform::Task<void> QtApplication::makeKeyWindow(UIWindowRef window) {
  const QPointer<QWindow> native = nativeWindowOf(window);
  if (!native || native->type() == Qt::Popup) co_return;
  std::function<void()> activate = [native] {
    closePopups();
    if (!native) return;
    native->raise();
    if (!isOnWayland()) native->requestActivate();
  };
  co_await performAsInput(std::move(activate));
  // Nothing tells that a window system does not let the program have the keyboard.
  const int looks = isOnWayland() ? 0 : kLooksForFocus;
  for (int look = 0; look < looks && QGuiApplication::focusWindow() != native; ++look) {
    co_await letProgramRun(kPauseBetweenLooks);
  }
  chosen_ = native;
  focusedThen_ = QGuiApplication::focusWindow();
}

std::shared_ptr<void> QtApplication::holdStill() {
  return stillness();
}

platform::UITouchRef QtApplication::makeTouch() {
  return std::make_shared<posix::TouchRecord>();
}

platform::Task<void> QtApplication::sendEvent(platform::UIEvent& event) {
  std::function<void()> send = [this, event = &event] {
    dispatch_.sendEvent(*event, [this, event] { fingers_.deliver(*event); });
  };
  co_await performAsInput(std::move(send));
  while (fingers_.hasNextStep()) {
    std::function<void()> next = [this] { fingers_.deliverNextStep(); };
    co_await performAsInput(std::move(next));
  }
}

platform::Task<platform::CFRunLoopRunResult> QtApplication::runLoopRunInMode(std::string,
                                                                             double seconds, bool) {
  co_await letProgramRun(seconds);
  co_return platform::CFRunLoopRunResult::TimedOut;
}

void QtApplication::setRunLoopObserver(platform::RunLoopObserver* observer) {
  watchLoops(observer);
}

std::optional<std::uint64_t> QtApplication::workCount() {
  return qt::workCount();
}

std::string QtApplication::currentWork() const {
  return workSinceWake();
}

bool QtApplication::setInputObserver(platform::InputObserver* observer) {
  return observeInput(observer);
}

bool QtApplication::setPaintObserver(platform::PaintObserver* observer) {
  observePainting(observer);
  return true;
}

bool QtApplication::openURL(std::string_view url) {
  return QDesktopServices::openUrl(QUrl(QString::fromStdString(std::string(url))));
}

}  // namespace tarni::qt
