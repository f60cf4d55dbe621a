#include "backends/ios/IosPlatform.h"

#include "backends/ios/Alerts.h"
#include "backends/ios/Application.h"
#include "backends/ios/Dispatch.h"
#include "backends/ios/Encoding.h"
#include "backends/ios/HIDEventSystem.h"
#include "backends/ios/MachHost.h"
#include "backends/ios/MainQueue.h"
#include "backends/ios/NotificationCenter.h"
#include "backends/ios/ObjectiveCRuntime.h"
#include "backends/ios/ProcessInfo.h"
#include "backends/ios/Screen.h"
#include "backends/ios/SystemLog.h"
#include "backends/ios/Transaction.h"
#include "backends/ios/URLLoader.h"

namespace tarni::ios {
namespace {

// The log comes first: what the others find missing is to be read.
struct Log {
  Log() {
    platform::Platform platform;
    platform.log = &log;
    platform::install(platform);
  }
  SystemLog log;
};

struct Parts : Log {
  ProcessInfo processInfo;
  MachHost machHost;
  Encoding encoding;
  NotificationCenter notificationCenter;
  MainQueue mainQueue;
  Dispatch dispatch{mainQueue};
  ObjectiveCRuntime runtime;
  Transaction transaction;
  Application application;
  Screen screen;
  Alerts alerts;
  HIDEventSystem hidEvents;
  URLLoader urlLoader;
};

}  // namespace

platform::Platform iosPlatform() {
  static auto& parts = *new Parts;
  platform::Platform platform;
  platform.log = &parts.log;
  platform.processInfo = &parts.processInfo;
  platform.machHost = &parts.machHost;
  platform.encoding = &parts.encoding;
  platform.notificationCenter = &parts.notificationCenter;
  platform.dispatch = &parts.dispatch;
  platform.runtime = &parts.runtime;
  platform.transaction = &parts.transaction;
  platform.application = &parts.application;
  platform.mainScreen = &parts.screen;
  platform.alerts = &parts.alerts;
  platform.hidEvents = &parts.hidEvents;
  platform.urlLoader = &parts.urlLoader;
  return platform;
}

}  // namespace tarni::ios
