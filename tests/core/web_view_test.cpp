#include "agent/WebView/WebView.h"

#include <gmock/gmock.h>

#include "agent/TcpCommunication/BaseManager/RecorderCommands.h"
#include "agent/core/state/GlobalVars.h"
#include "backends/headless/views/WebView.h"
#include "platform/Foundation/NSException.h"
#include "platform/Foundation/NSURLLoader.h"
#include "tests/support/Screen.h"

namespace tarni {
namespace {

using test::complete;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr const char* kOnePixel = "data:image/jpeg;base64,R0lGODlhAQABAAAAACwAAAAAAQABAAA=";

// A content server on which every file but one holds its own address.
class FakeServer : public platform::NSURLLoader {
 public:
  platform::Task<std::optional<std::string>> stringWithContentsOfURL(std::string url) override {
    if (url.find("xpathbuilder") != std::string::npos) co_return std::nullopt;
    co_return "script of " + url;
  }
};

class WebViews : public test::Screen {
 protected:
  WebViews() {
    platform::Platform platform = platform::current();
    platform.urlLoader = &server;
    platform::install(platform);
    REMOTE_CDN_URL = "http://scripts";
    GlobalVars::sharedInstance().set_currentWebView(nullptr);
    GlobalVars::sharedInstance().set_hybridRecordedSteps(std::nullopt);
    GlobalVars::sharedInstance().set_webViewBase64Image(std::nullopt);
  }

  void pass() {
    WebView().performRecorderAndPlaybackInjection();
    while (environment.runLoop().pump()) {
    }
  }
  std::shared_ptr<headless::WebView> page() {
    return headless::build<headless::WebView>().frame({{0, 0}, {100, 100}}).in(*window);
  }
  static std::optional<std::string> pendingSteps() {
    return GlobalVars::sharedInstance()._hybridRecordedSteps();
  }

  FakeServer server;
};

TEST_F(WebViews, LoadingPageWaits) {
  const auto web = page();
  web->setLoading(true);
  pass();
  EXPECT_THAT(web->evaluatedScripts(), IsEmpty());
}

TEST_F(WebViews, PageWithoutScriptsGetsAllOfThemInOrder) {
  const auto web = page();
  web->setAnswer("IsJqueryLoaded()", "True");
  pass();
  EXPECT_THAT(web->evaluatedScripts(), Not(Contains("script of http://scripts/jquery.js")))
      << "a page keeps its own";
  web->removeFromSuperview();
  const auto bare = page();
  bare->setAnswer("IsJqueryLoaded()", "False");
  pass();
  EXPECT_THAT(bare->evaluatedScripts(),
              ElementsAre("IsInjectionDone()", "script of http://scripts/preCheck.js",
                          "IsJqueryLoaded()", "script of http://scripts/jquery.js",
                          "script of http://scripts/TARNI_bililiteRange.js",
                          "script of http://scripts/TARNI_sendkeys.js", "",
                          "script of http://scripts/hybridrecorder.js",
                          "script of http://scripts/hybridplayer.js"));
}

TEST_F(WebViews, StepsOfAReadyPageCarryThePictureOfTheTouch) {
  const auto web = page();
  web->setAnswer("IsInjectionDone()", "DONE");
  web->setAnswer("startRecording()", "[TARNI_OBJECT_IMAGE, TARNI_OBJECT_IMAGE]");
  pass();
  EXPECT_EQ(GlobalVars::sharedInstance()._currentWebView(), web);
  EXPECT_EQ(pendingSteps(), std::string("[") + kOnePixel + ", " + kOnePixel + "]");
  GlobalVars::sharedInstance().set_webViewBase64Image("touched");
  pass();
  EXPECT_EQ(pendingSteps(), "[touched, touched]");
}

TEST_F(WebViews, PassWithoutStepsLeavesThoseThatWait) {
  const auto web = page();
  web->setAnswer("IsInjectionDone()", "DONE");
  GlobalVars::sharedInstance().set_hybridRecordedSteps("waiting");
  pass();
  EXPECT_EQ(pendingSteps(), "waiting");
  EXPECT_EQ(GlobalVars::sharedInstance()._webViewBase64Image(), kOnePixel);
  web->setAnswer("startRecording()", "newer");
  pass();
  EXPECT_EQ(pendingSteps(), "newer");
}

TEST_F(WebViews, PageThatFailsIsTriedAgain) {
  const auto web = page();
  web->setEngine([](const std::string&) -> std::string {
    throw platform::NSException("PageGone", "the page is gone");
  });
  pass();
  pass();
  EXPECT_THAT(web->evaluatedScripts(), ElementsAre("IsInjectionDone()", "IsInjectionDone()"));
}

TEST_F(WebViews, PassesDoNotPileUpWhileTheMainThreadIsBusy) {
  const auto web = page();
  for (int tick = 0; tick < 5; ++tick) WebView().performRecorderAndPlaybackInjection();
  pass();
  EXPECT_EQ(std::ranges::count(web->evaluatedScripts(), "IsInjectionDone()"), 1);
}

TEST_F(WebViews, ModesAreToldToThePageOnScreen) {
  complete(WebView().switchToSpyMode());
  const auto web = page();
  const auto other = page();
  complete(WebView().switchToSpyMode());
  complete(WebView().switchToRecorderMode());
  EXPECT_THAT(web->evaluatedScripts(), ElementsAre("switchtospymode()", "switchtorecordermode()"));
  EXPECT_THAT(other->evaluatedScripts(), IsEmpty());
}

TEST_F(WebViews, ModeThatCannotBeToldIsAnnouncedAllTheSame) {
  const auto impostor = plainView({});
  impostor->setClass(platform::uikit::UIWebView);
  EXPECT_THROW(complete(WebView().callJavaScriptFunctionWithoutOutPut(impostor, "f()")),
               platform::NSException);
  std::size_t count = 0;
  for (const auto& [command, toast] : {std::pair("startobjectspy", "Switched to Spy Mode"),
                                       std::pair("stopobjectspy", "Switched to Recording Mode")}) {
    complete(RecorderCommands::handle(command));
    environment.runLoop().runUntil([&] { return environment.alerts().shown().size() > count; });
    ASSERT_EQ(environment.alerts().shown().size(), ++count);
    EXPECT_EQ(environment.alerts().shown().back()->message, toast);
  }
  EXPECT_TRUE(environment.log().contains(
      "The page has not heard of the mode: the view evaluates no scripts"));
  pass();
}

}  // namespace
}  // namespace tarni
