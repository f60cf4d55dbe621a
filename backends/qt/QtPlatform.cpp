#include "backends/qt/QtPlatform.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>

#include "backends/posix/Dispatch.h"
#include "backends/posix/HIDEventSystem.h"
#include "backends/posix/MachHost.h"
#include "backends/posix/ObjectiveCRuntime.h"
#include "backends/posix/ProcessInfo.h"
#include "backends/posix/SystemLog.h"
#include "backends/qt/QtAlerts.h"
#include "backends/qt/QtApplication.h"
#include "backends/qt/ViewFactory.h"
#include "backends/qt/drawing/QtTransaction.h"
#include "backends/qt/input/QtEventHook.h"
#include "backends/qt/input/QtInputDevices.h"
#include "backends/qt/program/QtEncoding.h"
#include "backends/qt/program/QtMainQueue.h"
#include "backends/qt/views/QtExtension.h"
#include "backends/qt/views/ViewRegistry.h"

namespace tarni::qt {
namespace {

// The screen on which the key window is.
class QtScreen : public platform::UIScreen {
 public:
  explicit QtScreen(const QtApplication& application) : application_(application) {}

  platform::CGRect bounds() const override {
    const QScreen* const screen = current();
    if (!screen) return {};
    const QSize size = screen->size();
    return {{0, 0}, {double(size.width()), double(size.height())}};
  }
  double scale() const override {
    const QScreen* const screen = current();
    return screen ? screen->devicePixelRatio() : 1;
  }

 private:
  const QScreen* current() const {
    const QWindow* const native = nativeWindowOf(application_.keyWindow());
    return native ? native->screen() : QGuiApplication::primaryScreen();
  }

  const QtApplication& application_;
};

// Qt tells its observers by signals, which the controls themselves emit when they change.
class QtNotificationCenter : public platform::NSNotificationCenter {
 public:
  platform::Task<void> postNotificationName(std::string_view,
                                            std::shared_ptr<platform::UIView>) override {
    co_return;
  }
};

// Whatever can show a page from the network can read a text from there.
class URLLoader : public platform::NSURLLoader {
 public:
  platform::Task<std::optional<std::string>> stringWithContentsOfURL(std::string url) override {
    platform::NSURLLoader* const loader = extensions().urlLoader();
    if (!loader) co_return std::nullopt;
    co_return co_await loader->stringWithContentsOfURL(std::move(url));
  }
};

struct Parts {
  posix::SystemLog log;
  posix::ProcessInfo processInfo;
  posix::MachHost machHost;
  QtEncoding encoding;
  QtNotificationCenter notificationCenter;
  posix::Dispatch dispatch{QtMainQueue::shared()};
  posix::ObjectiveCRuntime runtime;
  QtEventDispatch events{runtime};
  QtTransaction transaction;
  QtApplication application{events};
  QtScreen screen{application};
  QtAlerts alerts;
  posix::HIDEventSystem hidEvents;
  URLLoader urlLoader;
  QtEventHook hook{events, application._touchesEvent(), log};
  QtDevices devices;
  QtInputDevices inputDevices{devices, Doer::Agent};
  QtInputDevices personsDevices{devices, Doer::Person};
};

platform::Platform platformOf(Parts& parts) {
  platform::Platform made;
  made.toolkit = std::string("Qt ") + qVersion();
  made.log = &parts.log;
  made.processInfo = &parts.processInfo;
  made.machHost = &parts.machHost;
  made.encoding = &parts.encoding;
  made.notificationCenter = &parts.notificationCenter;
  made.dispatch = &parts.dispatch;
  made.runtime = &parts.runtime;
  made.transaction = &parts.transaction;
  made.application = &parts.application;
  made.mainScreen = &parts.screen;
  made.alerts = &parts.alerts;
  made.hidEvents = &parts.hidEvents;
  made.inputDevices = &parts.inputDevices;
  made.personsDevices = &parts.personsDevices;
  made.urlLoader = &parts.urlLoader;
  return made;
}

Parts& parts() {
  static auto* const made = [] {
    makeViewsWith(makeView);
    return new Parts;
  }();
  return *made;
}

}  // namespace

const platform::Platform& qtPlatform() {
  static const auto* const made = new platform::Platform(platformOf(parts()));
  return *made;
}

QtEventDispatch& eventDispatch() {
  return parts().events;
}

}  // namespace tarni::qt
