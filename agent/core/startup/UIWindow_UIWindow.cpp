#include "agent/core/startup/UIWindow_UIWindow.h"

#include "agent/core/state/GlobalVars.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"

namespace tarni::UIWindow {

void load(platform::Class receiver) {
  if (receiver != platform::uikit::UIWindow) return;
  platform::NSLog("WINDOW IS LOADED %s", receiver->name().c_str());
  GlobalVars::sharedInstance().set_currentUIWindow(receiver);
}

}  // namespace tarni::UIWindow
