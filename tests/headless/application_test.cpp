#include <array>

#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/ViewController.h"
#include "samples/headless/LoginScreen.h"
#include "tests/headless/Screen.h"

namespace tarni::headless::test {
namespace {

namespace uikit = platform::uikit;

class ApplicationTest : public Screen {
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

TEST_F(ApplicationTest, EventsPassThroughTheExchangedMethod) {
  std::vector<std::string> seen;
  const auto button = build<Button>("OK").frame({{0, 0}, {100, 40}}).in(*window);
  button->onTap([&] { seen.emplace_back("application"); });
  auto& runtime = environment.runtime();
  runtime.class_addMethod(
      uikit::UIApplication, "hooked:",
      [&](const std::vector<platform::Argument>& arguments) {
        seen.emplace_back("hook");
        runtime.perform(uikit::UIApplication, "hooked:", arguments);
      },
      "v@:@");
  runtime.method_exchangeImplementations(
      runtime.class_getInstanceMethod(uikit::UIApplication, "sendEvent:"),
      runtime.class_getInstanceMethod(uikit::UIApplication, "hooked:"));
  complete(tap(application, touchAt({10, 10})));
  EXPECT_THAT(seen, testing::ElementsAre("hook", "hook", "application"));
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

TEST_F(ApplicationTest, TheLogKeepsEventsAsTheyWere) {
  const auto view = box({{0, 0}, {300, 300}});
  const auto first = touchAt({10, 10});
  const auto second = touchAt({20, 20});
  send(UITouchPhase::Began, {first, second});
  moveTo(first, {30, 30});
  send(UITouchPhase::Ended, {first});
  const auto& events = application.eventLog().events();
  ASSERT_EQ(events.size(), 3U);
  EXPECT_EQ(application.eventLog().phases(), "Began Began Moved Ended");
  EXPECT_EQ(events[0].touches[1].locationInWindow, (CGPoint{20, 20}));
  EXPECT_EQ(events[0].touches[0].locationInWindow, (CGPoint{10, 10}));
  EXPECT_EQ(events[1].touches[0].view.lock(), view);
  EXPECT_LE(events[0].touches[0].timestamp, events[2].touches[0].timestamp);
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

TEST_F(ApplicationTest, TheRunLoopModeStackIsTheApplicationsOwn) {
  application.pushRunLoopMode("tracking");
  EXPECT_THAT(application.runLoopModes(),
              testing::ElementsAre(platform::kCFRunLoopDefaultMode, "tracking"));
  application.popRunLoopMode("tracking");
  application.popRunLoopMode("tracking");
  EXPECT_THAT(application.runLoopModes(), testing::ElementsAre(platform::kCFRunLoopDefaultMode));
}

TEST_F(ApplicationTest, WhatWasAskedIsRemembered) {
  const auto alert = environment.alerts().show("Oops", "Cancel", std::nullopt);
  EXPECT_TRUE(environment.alerts().shown().back()->isVisible());
  alert->dismissWithClickedButtonIndex(0, true);
  EXPECT_EQ(environment.alerts().shown().back()->clicked, 0);
  EXPECT_TRUE(window->subviews().empty());

  platform::UIViewRef sender;
  environment.notificationCenter().addObserver("changed",
                                               [&](const auto& object) { sender = object; });
  complete(environment.notificationCenter().postNotificationName("other", nullptr));
  EXPECT_EQ(sender, nullptr);
  complete(environment.notificationCenter().postNotificationName("changed", window));
  EXPECT_EQ(sender, window);
  EXPECT_EQ(environment.notificationCenter().posted().size(), 2U);
}

TEST_F(ApplicationTest, EncodingsAreCanonical) {
  const auto& encoding = environment.encoding();
  EXPECT_THAT(encoding.UUIDString(),
              testing::MatchesRegex("[0-9A-F]+-[0-9A-F]+-4[0-9A-F]+-[0-9A-F]+-[0-9A-F]+"));
  EXPECT_NE(encoding.UUIDString(), encoding.UUIDString());
  const std::array bytes{std::byte{0xFF}, std::byte{0x00}, std::byte{0x10}, std::byte{0x83}};
  EXPECT_EQ(encoding.base64EncodedString(bytes), "/wAQgw==");
  EXPECT_EQ(encoding.base64EncodedString({}), "");
}

TEST_F(ApplicationTest, TheSystemVersionIsWhatTheTestSays) {
  auto& info = environment.processInfo();
  info.setOperatingSystemVersion({8, 4, 0});
  EXPECT_TRUE(info.isOperatingSystemAtLeastVersion({8, 0, 0}));
  EXPECT_FALSE(info.isOperatingSystemAtLeastVersion({9, 0, 0}));
}

}  // namespace
}  // namespace tarni::headless::test
