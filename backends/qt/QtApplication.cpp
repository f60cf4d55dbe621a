#include "backends/qt/QtApplication.h"

#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <algorithm>

#include "backends/posix/TouchRecord.h"
#include "backends/qt/QtProgram.h"
#include "backends/qt/ViewRegistry.h"

namespace tarni::qt {

using platform::UIWindowRef;

namespace {

UIWindowRef shownWindow(QWidget* widget) {
  return widget && widget->isVisible() ? viewOfWidget(widget->window()) : nullptr;
}

// A list of completions leaves the keyboard, and with it the user, in the field below it.
QWidget* popupThatHoldsTheUser() {
  QWidget* const popup = QApplication::activePopupWidget();
  const QWidget* const typedInto = popup ? popup->focusProxy() : nullptr;
  return typedInto && typedInto->window() != popup ? nullptr : popup;
}

// What a user can work with: no tool tip and no splash screen.
bool isForUser(const QWindow& window) {
  return window.isVisible() && window.type() != Qt::ToolTip && window.type() != Qt::SplashScreen;
}

}  // namespace

UIWindowRef QtApplication::keyWindow() const {
  for (QWidget* const facing :
       {popupThatHoldsTheUser(), QApplication::activeModalWidget(), QApplication::activeWindow()}) {
    if (UIWindowRef window = shownWindow(facing)) return window;
  }
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

bool QtApplication::openURL(std::string_view url) {
  return QDesktopServices::openUrl(QUrl(QString::fromStdString(std::string(url))));
}

}  // namespace tarni::qt
