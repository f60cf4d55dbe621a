#include "agent/core/startup/Load.h"

#include <cstdlib>

#include "agent/core/startup/RecordControl.h"
#include "agent/core/startup/UIApplication_KIFAdditions.h"
#include "agent/core/startup/UIViewController_UIViewController.h"
#include "agent/core/startup/UIWindow_UIWindow.h"
#include "platform/UIKit/Classes.h"

namespace tarni {

void loadAgent() {
  std::atexit(destroy_recorder);
  KIFAdditions::loadUIApplication(platform::uikit::UIApplication);
  UIViewController::load(platform::uikit::UIViewController);
  UIWindow::load(platform::uikit::UIWindow);
  RecordControl::load();
}

void destroy_recorder() {}

}  // namespace tarni
