// Platform: one pointer for each interface of the seam. A backend fills it in and the entry
// installs it before the agent starts; from then on everybody reaches the platform through
// `current()`.
//
// The interfaces belong to the backend and live as long as the process: threads of the agent still
// run while it exits.
#pragma once

#include <string>

#include "platform/Dispatch/Dispatch.h"
#include "platform/Foundation/Foundation.h"
#include "platform/Foundation/NSLog.h"
#include "platform/Foundation/NSURLLoader.h"
#include "platform/IOKit/IOHIDEvent.h"
#include "platform/Mach/MachHost.h"
#include "platform/ObjectiveC/Runtime.h"
#include "platform/QuartzCore/CALayer.h"
#include "platform/UIKit/InputDevices.h"
#include "platform/UIKit/UIApplication.h"

namespace tarni::platform {

struct Platform {
  // What the application is made with ("Qt 5.15.8"); empty when the platform does not say.
  std::string toolkit;
  SystemLog* log = nullptr;
  NSProcessInfo* processInfo = nullptr;
  MachHost* machHost = nullptr;
  NSEncoding* encoding = nullptr;
  NSNotificationCenter* notificationCenter = nullptr;
  Dispatch* dispatch = nullptr;
  ObjectiveCRuntime* runtime = nullptr;
  CATransaction* transaction = nullptr;
  UIApplication* application = nullptr;
  UIScreen* mainScreen = nullptr;
  UIAlerts* alerts = nullptr;
  IOHIDEventSystem* hidEvents = nullptr;
  // Null on a platform that has none.
  InputDevices* inputDevices = nullptr;
  // The same mouse and keyboard in a person's hands: what they do is shown to the InputObserver.
  // Null where nobody can be shown.
  InputDevices* personsDevices = nullptr;
  // Null on a platform without a loader: every address then reads as empty.
  NSURLLoader* urlLoader = nullptr;
};

// Replaces the platform. Called before the agent starts; tests call it once a test.
void install(const Platform& platform);

// The installed platform. Any thread.
const Platform& current();

}  // namespace tarni::platform
