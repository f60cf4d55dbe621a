// A platform that does its part badly: drawing that fails, scripts that are not answered, a clock
// that jumps.

#include <coroutine>
#include <filesystem>
#include <limits>
#include <new>
#include <nlohmann/json.hpp>

#include "agent/TcpCommunication/PlaybackExecutor.h"
#include "agent/WebView/WebView.h"
#include "agent/elements/UIViewMemoryCache.h"
#include "agent/interaction/CALayer_KIFAdditions.h"
#include "agent/interaction/UIView_KIFAdditions.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/TableView.h"
#include "backends/headless/views/WebView.h"
#include "backends/headless/views/Window.h"
#include "platform/Foundation/NSException.h"
#include "tests/recording/Recording.h"
#include "tests/support/Files.h"

namespace tarni::test {
namespace {

namespace fs = std::filesystem;
using headless::build;
using headless::Button;
using nlohmann::ordered_json;

class Faults : public Recording {
 protected:
  ~Faults() override {
    GlobalVars::sharedInstance().set_isPlaybackStarted(std::nullopt);
    GlobalVars::sharedInstance().set_currentWebView(nullptr);
    environment.install();
  }

  static ordered_json answer(const ordered_json& command) {
    const auto text = complete(PlaybackExecutor::execute(command.dump()));
    return ordered_json::parse(text.value_or("no answer"), nullptr, false);
  }
  static ordered_json answerOn(const platform::UIViewRef& view, ordered_json command) {
    UIViewMemoryCache::sharedInstance().addViewInMemoryCache(view, "the element");
    command["accessorvalue"] = "the element";
    return answer(command);
  }
  static bool isFound(const std::string& text) {
    return answer({{"functionname", "findelements"},
                   {"tagname", "UIButton"},
                   {"accessortype", "text"},
                   {"accessorvalue", text}})
               .size() == 1;
  }
};

// --- drawing

enum class Failure { NoPicture, NoPixels, Raises, ThrowsSomething, CannotBeEncoded };

// How `failure` shows; none is a picture that somebody could look at.
class BadImage : public platform::UIImage {
 public:
  explicit BadImage(Failure failure) : failure_(failure) {}
  platform::CGSize size() const override { return {}; }
  double scale() const override { return 0; }
  platform::UIImageRef crop(const platform::CGRect&) const override {
    return std::make_shared<BadImage>(failure_);
  }
  std::vector<std::byte> JPEGRepresentation(double) const override {
    if (failure_ == Failure::CannotBeEncoded) throw std::bad_alloc();
    return {};
  }

 private:
  Failure failure_;
};

template <typename Kind>
class Undrawable : public Kind {
 public:
  template <typename... Arguments>
  explicit Undrawable(Failure failure, Arguments&&... arguments)
      : Kind(std::forward<Arguments>(arguments)...), failure_(failure) {}

  platform::Task<platform::UIImageRef> drawViewHierarchy() override {
    switch (failure_) {
      case Failure::NoPicture:
        co_return nullptr;
      case Failure::Raises:
        throw platform::NSException(platform::NSGenericException, "nothing to draw on");
      case Failure::ThrowsSomething:
        throw 5;
      case Failure::NoPixels:
      case Failure::CannotBeEncoded:
        break;
    }
    co_return std::make_shared<BadImage>(failure_);
  }

 private:
  Failure failure_;
};

class Drawing : public Faults, public testing::WithParamInterface<Failure> {
 protected:
  Drawing() {
    environment.application().removeWindow(window);
    window =
        std::make_shared<Undrawable<headless::Window>>(GetParam(), environment.screen().bounds());
    window->makeKeyAndVisible(environment.application());
    button = build<Undrawable<Button>>(GetParam(), "Log in").frame({{0, 0}, {100, 40}}).in(*window);
  }

  std::shared_ptr<Button> button;
};

TEST_P(Drawing, FailsWithoutACommandFailingUnanswered) {
  for (const char* const name : {"ai_getscreensnapshot", "ai_findelements"}) {
    SCOPED_TRACE(name);
    const ordered_json entries = answer({{"functionname", name}, {"tagname", "uibutton"}});
    ASSERT_EQ(entries.size(), 1U);
    const ordered_json& entry = entries.at(0);
    // Either the command says what went wrong, or there is no picture where one should be.
    const bool saysWhy = !entry.value("exceptionmsg", "").empty();
    const bool isEmpty = entry.value("output", entry.value("imageBase64", "x")).empty();
    EXPECT_NE(saysWhy, isEmpty) << entry.dump();
    EXPECT_TRUE(isFound("Log in"));
  }
}

// A step can be played without its picture.
TEST_P(Drawing, FailsWithoutAStepBeingLost) {
  const ordered_json object = objectOf(stepOfTap(*button));
  EXPECT_EQ(object.at("sahiText"), "Log in");
  EXPECT_EQ(object.value("ObjectImage", ""), "");
}

TEST_P(Drawing, FailsWithoutTheViewTreeOfAFailureBeingLost) {
  const Folder folder;
  setenv("KIF_SCREENSHOTS", folder.path.c_str(), 1);
  answer({{"functionname", 5}});
  unsetenv("KIF_SCREENSHOTS");
  const std::vector<fs::path> written(fs::directory_iterator(folder.path), {});
  EXPECT_TRUE(std::ranges::any_of(written,
                                  [](const fs::path& path) { return path.extension() == ".txt"; }));
}

INSTANTIATE_TEST_SUITE_P(Way, Drawing,
                         testing::Values(Failure::NoPicture, Failure::NoPixels, Failure::Raises,
                                         Failure::ThrowsSomething, Failure::CannotBeEncoded),
                         [](const auto& info) {
                           switch (info.param) {
                             case Failure::NoPicture:
                               return "NoPicture";
                             case Failure::NoPixels:
                               return "NoPixels";
                             case Failure::Raises:
                               return "Raises";
                             case Failure::ThrowsSomething:
                               return "ThrowsSomething";
                             case Failure::CannotBeEncoded:
                               break;
                           }
                           return "CannotBeEncoded";
                         });

// --- scripts

// A page that answers nothing until its platform has waited long enough for it.
class SilentPage : public headless::WebView {
 public:
  platform::Task<std::string> stringByEvaluatingJavaScriptFromString(std::string) override {
    ++asked_;
    co_await Silence{*this};
    co_return std::string();
  }
  int asked() const { return asked_; }
  // The platform has waited long enough. False when nobody waits.
  bool giveUp() {
    const std::coroutine_handle<> waiting = std::exchange(waiting_, nullptr);
    if (waiting) waiting.resume();
    return waiting != nullptr;
  }

 private:
  struct Silence {
    SilentPage& page;
    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> waiting) const noexcept { page.waiting_ = waiting; }
    void await_resume() const noexcept {}
  };

  std::coroutine_handle<> waiting_;
  int asked_ = 0;
};

TEST_F(Faults, APageThatNeverAnswersHoldsUpNoFingerAndNoLaterCommand) {
  const auto page = build<SilentPage>().frame({{0, 0}, {300, 300}}).in(*window);
  int taps = 0;
  const auto button = build<Button>("Log in").frame({{0, 400}, {100, 40}}).in(*window);
  button->onTap([&] { ++taps; });
  GlobalVars::sharedInstance().set_currentWebView(page);

  platform::MainQueue& queue = platform::current().dispatch->mainQueue();
  std::vector<std::string> answers;
  const auto send = [&](const ordered_json& command) {
    queue.asyncTask([&answers, text = command.dump()]() -> platform::Task<void> {
      // The coroutine keeps what it is given, not what its closure holds.
      return [](std::vector<std::string>& all, std::string message) -> platform::Task<void> {
        const auto text = co_await PlaybackExecutor::execute(std::move(message));
        all.push_back(text.value_or("(none)"));
      }(answers, text);
    });
  };
  send({{"functionname", "gettext"}, {"accessorvalue", "nothing"}});
  send({{"functionname", "findelements"}, {"tagname", "uibutton"}});
  for (int tick = 0; tick < 5; ++tick) WebView().performRecorderAndPlaybackInjection();
  const auto serve = [&] {
    while (environment.runLoop().pump()) {
    }
  };
  serve();
  EXPECT_EQ(page->asked(), 1);
  EXPECT_TRUE(answers.empty());
  environment.finger().tap(*button);
  EXPECT_EQ(taps, 1) << "the application is not held up";

  while (page->giveUp()) serve();
  ASSERT_EQ(answers.size(), 2U);
  EXPECT_EQ(answers.front(), "[]");
  EXPECT_EQ(ordered_json::parse(answers.back()).size(), 1U);
  // Two commands and one pass, which asks whether the scripts are there and then gives them.
  EXPECT_LE(page->asked(), 2 + 9) << "the passes did not pile up";
}

// --- the clock

// Jumps back and forth by days with every look, and shows no time at all now and then.
class JumpingClock : public platform::NSProcessInfo {
 public:
  explicit JumpingClock(platform::NSProcessInfo& real) : real_(real) {}

  double systemUptime() const override { return jumped(real_.systemUptime()); }
  double currentMediaTime() const override { return jumped(real_.currentMediaTime()); }
  std::uint64_t machAbsoluteTime() const override {
    return ++looks_ % 2 == 0 ? 0 : std::numeric_limits<std::uint64_t>::max();
  }
  bool respondsToIsOperatingSystemAtLeastVersion() const override {
    return real_.respondsToIsOperatingSystemAtLeastVersion();
  }
  bool isOperatingSystemAtLeastVersion(platform::NSOperatingSystemVersion version) const override {
    return real_.isOperatingSystemAtLeastVersion(version);
  }
  double processorTime() const override { return real_.processorTime(); }
  std::optional<std::uint64_t> residentMemory() const override { return real_.residentMemory(); }
  std::string executablePath() const override { return real_.executablePath(); }
  long looks() const { return looks_; }

 private:
  double jumped(double time) const {
    constexpr double kDays = 1e6;
    switch (++looks_ % 4) {
      case 0:
        return time + kDays;
      case 1:
        return time - kDays;
      case 2:
        return std::numeric_limits<double>::quiet_NaN();
      default:
        return time;
    }
  }

  platform::NSProcessInfo& real_;
  mutable std::atomic<long> looks_ = 0;
};

class Clock : public Faults {
 protected:
  Clock() {
    platform::Platform parts = platform::current();
    parts.processInfo = &clock;
    platform::install(parts);
  }

  JumpingClock clock{environment.processInfo()};
};

TEST_F(Clock, MayJumpUnderTapsAndDragsAndWaits) {
  int taps = 0;
  const auto button = build<Button>("Log in").frame({{0, 0}, {100, 40}}).in(*window);
  button->onTap([&] { ++taps; });
  const auto table = build<headless::TableView>().frame({{0, 100}, {200, 100}}).in(*window);
  table->setRows({"one", "two", "three", "four", "five", "six"});
  button->layer().addAnimation({.beginTime = 0, .duration = 1e9}, "endless");
  for (int round = 1; round <= 20; ++round) {
    EXPECT_EQ(answerOn(button, {{"functionname", "clickelement"}}), ordered_json::array());
    EXPECT_EQ(taps, round);
    EXPECT_EQ(answerOn(table, {{"functionname", "swipeon"}, {"datavalue", "up"}}),
              ordered_json::array());
    EXPECT_GT(table->contentOffset().y, 0);
    answer({{"functionname", "swipereset"}});
    complete(KIFAdditions::longPressAtPoint(table, {10, 10}, 0.1));
    KIFAdditions::hasAnimations(window->layer());
    GlobalVars::sharedInstance().set_viewControllerLoaded("LOADING");
    EXPECT_TRUE(isFound("Log in"));
    GlobalVars::sharedInstance().set_viewControllerLoaded("LOADED");
  }
  EXPECT_GT(clock.looks(), 100);
}

TEST_F(Clock, MayJumpWhileAPersonTaps) {
  const auto button = build<Button>("Log in").frame({{0, 0}, {100, 40}}).in(*window);
  for (int round = 0; round < 5; ++round) {
    EXPECT_EQ(objectOf(stepOfTap(*button)).at("sahiText"), "Log in");
  }
}

}  // namespace
}  // namespace tarni::test
