#include "agent/core/startup/UIViewController_UIViewController.h"

#include "agent/core/state/GlobalVars.h"
#include "agent/interaction/Swizzle.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"

namespace tarni::UIViewController {
namespace {

using Arguments = std::vector<platform::Argument>;

// After the exchange the hook's name stands for the system's own method.
void callSystemMethod(const char* hookSelector, const Arguments& arguments) {
  try {
    platform::current().runtime->perform(platform::uikit::UIViewController, hookSelector,
                                         arguments);
  } catch (...) {
    platform::logFailure(hookSelector);
  }
}

}  // namespace

void load(platform::Class receiver) {
  if (receiver != platform::uikit::UIViewController) return;
  platform::ObjectiveCRuntime& runtime = *platform::current().runtime;
  runtime.class_addMethod(receiver, "csViewDidAppear:", csViewDidAppear, "v@:B");
  runtime.class_addMethod(receiver, "csViewWillAppear:", csViewWillAppear, "v@:B");
  swizzleWithFor("viewDidAppear:", "csViewDidAppear:", receiver);
  swizzleWithFor("viewWillAppear:", "csViewWillAppear:", receiver);
}

void csViewDidAppear(const Arguments& arguments) noexcept {
  callSystemMethod("csViewDidAppear:", arguments);
  platform::NSLog("View Controller Loaded");
  GlobalVars::sharedInstance().set_viewControllerLoaded("LOADED");
}

void csViewWillAppear(const Arguments& arguments) noexcept {
  callSystemMethod("csViewWillAppear:", arguments);
  platform::NSLog("View Controller is getting Loaded");
  GlobalVars::sharedInstance().set_viewControllerLoaded("LOADING");
}

}  // namespace tarni::UIViewController
