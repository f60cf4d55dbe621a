#include "backends/ios/IosPlatform.h"

#include "backends/ios/Application.h"
#include "backends/ios/runtime/ObjectiveCRuntime.h"
#include "backends/ios/system/Dispatch.h"
#include "backends/ios/system/Encoding.h"
#include "backends/ios/system/MachHost.h"
#include "backends/ios/system/MainQueue.h"
#include "backends/ios/system/NotificationCenter.h"
#include "backends/ios/system/ProcessInfo.h"
#include "backends/ios/system/SystemLog.h"
#include "backends/ios/system/URLLoader.h"
#include "backends/ios/touch/HIDEventSystem.h"
#include "backends/ios/views/Alerts.h"
#include "backends/ios/views/Screen.h"
#include "backends/ios/views/Transaction.h"

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
  platform.toolkit = "UIKit";
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
