#include "agent/core/startup/Load.h"

#include <cstdlib>

#include "agent/core/startup/RecordControl.h"
#include "agent/core/startup/UIApplication_KIFAdditions_EventHook.h"
#include "agent/core/startup/UIViewController_UIViewController.h"
#include "agent/core/startup/UIWindow_UIWindow.h"
#include "agent/session/Channel.h"
#include "platform/UIKit/Classes.h"

namespace tarni {

void loadAgent() {
  std::atexit(destroy_recorder);
  KIFAdditions::loadUIApplication(platform::uikit::UIApplication);
  UIViewController::load(platform::uikit::UIViewController);
  UIWindow::load(platform::uikit::UIWindow);
  // Who sees that the ports are open finds the channel as well.
  session::open();
  RecordControl::load();
}

void destroy_recorder() {
  session::close();
}

}  // namespace tarni
