#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/ViewController.h"
#include "samples/headless/LoginScreen.h"
#include "tests/headless/TouchScreen.h"

namespace tarni::headless::test {
namespace {

namespace uikit = platform::uikit;

class ApplicationTest : public TouchScreen {
 protected:
  Application& application = environment.application();

  // Whether any visible label of the window has the text.
  static bool shows(const View& root, const std::string& text) {
    return find(root, text) != nullptr;
  }
  static const View* find(const View& root, const std::string& text) {
    std::vector<const View*> waiting{&root};
    while (!waiting.empty()) {
      const View* const view = waiting.back();
      waiting.pop_back();
      const auto* const label = dynamic_cast<const Label*>(view);
      if (label && label->labelText() == text) return view;
      for (std::size_t i = 0; i < view->subviews().size(); ++i) waiting.push_back(&view->child(i));
    }
    return nullptr;
  }

  // As the agent taps: the end is sent with the event of the start.
  static platform::Task<void> tap(Application& application, platform::UITouchRef touch) {
    platform::UIEvent& event = application._touchesEvent();
    event._clearTouches();
    event._addTouch(touch, false);
    touch->setPhase(UITouchPhase::Began);
    co_await application.sendEvent(event);
    touch->setPhase(UITouchPhase::Ended);
    co_await application.sendEvent(event);
  }
  platform::UITouchRef touchOn(const std::string& text, const Window& shown) {
    const View* const view = find(shown, text);
    const CGPoint point =
        view->convertPointToWindow({view->bounds().midX(), view->bounds().midY()});
    auto touch = application.makeTouch();
    touch->setWindow(application.keyWindow());
    touch->_setLocationInWindow(point, true);
    touch->setView(shown.hitTest(point));
    return touch;
  }
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

TEST_F(ApplicationTest, AnEventThatIsRefilledWhileItIsWatchedActsAsRefilled) {
  int taps = 0;
  const auto button = build<Button>("OK").frame({{0, 0}, {100, 40}}).in(*window);
  button->onTap([&] { ++taps; });
  auto& runtime = environment.runtime();
  const auto original =
      runtime.class_getInstanceMethod(uikit::UIApplication, "sendEvent:")->implementation;
  bool isInside = false;
  runtime.class_replaceMethod(
      uikit::UIApplication, "sendEvent:",
      [&](const std::vector<platform::Argument>& arguments) {
        if (!std::exchange(isInside, true)) complete(tap(application, touchAt({-100, -200})));
        original(arguments);
      },
      "v@:@");
  environment.finger().tap(*button);
  EXPECT_EQ(taps, 0);
}

TEST_F(ApplicationTest, OtherEventsAndStrayPhasesAreHarmless) {
  posix::EventRecord motion(platform::UIEventType::Motion);
  complete(application.sendEvent(motion));
  const auto touch = touchAt({10, 10});
  send(UITouchPhase::Moved, {touch});
  send(UITouchPhase::Ended, {touch});
  send(UITouchPhase::Ended, {application.makeTouch()});
  send(UITouchPhase::Began, {application.makeTouch()});
  EXPECT_EQ(application.eventLog().events().size(), 5U);
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

TEST_F(ApplicationTest, ANestedLoopServesTheMainQueueOnceItsClickHasEnded) {
  const auto login = samples::buildLoginScreen(environment);
  auto& loop = environment.runLoop();
  std::vector<std::string> seen;
  loop.asyncTask([&] { return tap(application, touchOn("Details…", *login)); });
  loop.async([&] { seen.emplace_back(shows(*login, "Really?") ? "open" : "not open"); });
  loop.asyncTask([&] { return tap(application, touchOn("OK", *login)); });
  loop.async([&] { seen.emplace_back(shows(*login, "Really?") ? "open" : "closed"); });
  EXPECT_TRUE(loop.runUntil([&] { return seen.size() == 2; }, 30));
  EXPECT_THAT(seen, testing::ElementsAre("open", "closed"));
  EXPECT_TRUE(loop.runUntil([&] { return shows(*login, "Accepted"); }, 30));
}

TEST_F(ApplicationTest, APostedTouchsExceptionReachesItsSender) {
  const auto button = build<Button>("OK").frame({{0, 0}, {100, 40}}).in(*window);
  button->setOpensNestedLoop(true);
  button->onTap([] { throw std::runtime_error("from the action"); });
  std::string reason;
  platform::spawn(tap(application, touchAt({10, 10})), [&](const std::exception_ptr& failure) {
    try {
      if (failure) std::rethrow_exception(failure);
    } catch (const std::exception& error) {
      reason = error.what();
    }
  });
  EXPECT_TRUE(environment.runLoop().runUntil([&] { return !reason.empty(); }, 30));
  EXPECT_EQ(reason, "from the action");
}

}  // namespace
}  // namespace tarni::headless::test
