#include "backends/headless/views/ViewController.h"
#include "tests/headless/TouchScreen.h"

namespace tarni::headless::test {
namespace {

namespace uikit = platform::uikit;

class ApplicationTest : public TouchScreen {
 protected:
  Application& application = environment.application();
};

TEST_F(ApplicationTest, TheKeyWindowComesFirst) {
  const auto second = environment.makeWindow();
  const auto hidden = environment.makeWindow();
  hidden->setHidden(true);
  application.setKeyWindow(second);
  EXPECT_EQ(application.keyWindow(), second);
  EXPECT_THAT(application.windowsWithKeyWindow(), testing::ElementsAre(second, window));
  application.removeWindow(second);
  EXPECT_EQ(application.keyWindow(), hidden);
  application.setKeyWindow(nullptr);
  EXPECT_EQ(application.keyWindow(), nullptr);
}

TEST_F(ApplicationTest, ScreensTellThatTheyAppear) {
  std::vector<std::string> seen;
  auto& runtime = environment.runtime();
  for (const char* selector : {"viewWillAppear:", "viewDidAppear:"}) {
    runtime.class_replaceMethod(
        uikit::UIViewController, selector,
        [&seen, selector](const std::vector<platform::Argument>& arguments) {
          seen.push_back(selector + std::to_string(std::get<bool>(arguments.at(0))));
        },
        "v@:B");
  }
  const auto view = std::make_shared<View>();
  const auto controller = std::make_shared<ViewController>(view);
  controller->onDidAppear([&] { seen.emplace_back(view->window() ? "shown" : "not shown"); });
  window->setRootViewController(controller);
  EXPECT_THAT(seen, testing::ElementsAre("viewWillAppear:0", "viewDidAppear:0", "shown"));
  EXPECT_EQ(view->frame(), window->bounds());
  const auto sheet = std::make_shared<ViewController>(std::make_shared<View>());
  sheet->presentIn(*window, true);
  EXPECT_EQ(seen.back(), "viewDidAppear:1");
  sheet->dismiss();
  EXPECT_THAT(window->subviews(), testing::ElementsAre(view));
}

}  // namespace
}  // namespace tarni::headless::test
