// Environment: the whole in-memory platform. It builds all parts and installs them.
//
//   static auto& environment = *new Environment;   // lives as long as the process
//   environment.install();
//   auto window = std::make_shared<Window>(environment.screen().bounds());
//   window->makeKeyAndVisible(environment.application());
//   environment.runLoop().run();
//
// The thread that makes it is the main thread. Programs with an agent never destroy it, since the
// agent's threads run until the process ends; tests that start none may have one each.
#pragma once

#include <memory>

#include "backends/headless/Alerts.h"
#include "backends/headless/Application.h"
#include "backends/headless/Encoding.h"
#include "backends/headless/LineLog.h"
#include "backends/headless/NotificationCenter.h"
#include "backends/headless/ProcessInfo.h"
#include "backends/headless/RunLoop.h"
#include "backends/headless/Screen.h"
#include "backends/headless/Transaction.h"
#include "backends/headless/events/Finger.h"
#include "backends/headless/events/InputDevices.h"
#include "backends/posix/Dispatch.h"
#include "backends/posix/HIDEventSystem.h"
#include "backends/posix/MachHost.h"
#include "backends/posix/ObjectiveCRuntime.h"
#include "platform/Platform.h"

namespace tarni::headless {

class Environment {
 public:
  Environment() = default;
  // Closes the main queue: what other threads still append is dropped, what they log is logged.
  ~Environment();
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

  // Makes this the platform of the process.
  void install();

  // A window of the screen's size, shown as the key window.
  WindowRef makeWindow();
  // For tests that do not want to wait: see ProcessInfo::setVirtual.
  void useVirtualClock() { shared_.processInfo.setVirtual(true); }

  LineLog& log() { return shared_.log; }
  ProcessInfo& processInfo() { return shared_.processInfo; }
  Encoding& encoding() { return encoding_; }
  NotificationCenter& notificationCenter() { return notificationCenter_; }
  RunLoop& runLoop() { return shared_.runLoop; }
  posix::Dispatch& dispatch() { return shared_.dispatch; }
  posix::ObjectiveCRuntime& runtime() { return runtime_; }
  Transaction& transaction() { return transaction_; }
  Application& application() { return application_; }
  Screen& screen() { return screen_; }
  Alerts& alerts() { return alerts_; }
  posix::HIDEventSystem& hidEvents() { return hidEvents_; }
  // The user's first finger.
  Finger& finger() { return finger_; }

 private:
  // What other threads use lives until the process ends.
  struct Shared {
    LineLog log;
    ProcessInfo processInfo;
    posix::MachHost machHost;
    RunLoop runLoop{processInfo};
    posix::Dispatch dispatch{runLoop};
  };
  static Shared& makeShared();

  Shared& shared_ = makeShared();
  Encoding encoding_;
  NotificationCenter notificationCenter_;
  posix::ObjectiveCRuntime runtime_;
  Transaction transaction_;
  Application application_{runtime_, shared_.runLoop};
  Screen screen_;
  Alerts alerts_;
  posix::HIDEventSystem hidEvents_;
  Finger finger_{application_};
  InputDevices inputDevices_{application_};
  InputDevices personsDevices_{application_, InputDevices::Doer::Person};
};

}  // namespace tarni::headless
