#include "agent/core/startup/UIApplication_KIFAdditions_EventHook.h"
#include "agent/core/startup/UIViewController_UIViewController.h"
#include "agent/core/startup/UIWindow_UIWindow.h"
#include "agent/core/state/GlobalVars.h"
#include "backends/headless/views/ViewController.h"
#include "platform/UIKit/Classes.h"
#include "tests/support/Screen.h"

namespace tarni {
namespace {

namespace uikit = platform::uikit;

class LoadHooks : public test::Screen {
 protected:
  LoadHooks() { GlobalVars::sharedInstance().set_isPlaybackStarted(std::nullopt); }

  int timesLogged(const std::string& wanted) {
    int count = 0;
    for (const std::string& line : environment.log().lines()) count += line == wanted ? 1 : 0;
    return count;
  }
};

TEST_F(LoadHooks, ViewControllersTellWhenTheyAreLoaded) {
  std::vector<std::optional<std::string>> statesInSystemMethods;
  for (const char* selector : {"viewWillAppear:", "viewDidAppear:"}) {
    environment.runtime().class_replaceMethod(
        uikit::UIViewController, selector,
        [&](const std::vector<platform::Argument>& arguments) {
          EXPECT_TRUE(std::get<bool>(arguments.at(0)));
          statesInSystemMethods.push_back(GlobalVars::sharedInstance()._viewControllerLoaded());
        },
        "v@:B");
  }
  UIViewController::load(uikit::UIViewController);
  UIViewController::load(platform::defineClass("MyController", uikit::UIViewController));
  GlobalVars::sharedInstance().set_viewControllerLoaded("LOADED");
  const auto controller =
      std::make_shared<headless::ViewController>(std::make_shared<headless::View>());
  controller->presentIn(*window, true);
  // The system's own method runs before the state changes.
  EXPECT_EQ(statesInSystemMethods, (std::vector<std::optional<std::string>>{"LOADED", "LOADING"}));
  EXPECT_EQ(GlobalVars::sharedInstance()._viewControllerLoaded(), "LOADED");
  EXPECT_EQ(timesLogged("View Controller is getting Loaded"), 1);
  EXPECT_EQ(timesLogged("View Controller Loaded"), 1);
}

}  // namespace
}  // namespace tarni
