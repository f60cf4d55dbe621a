#include "agent/WebView/WebView.h"

#include <gmock/gmock.h>

#include "agent/TcpCommunication/BaseManager/RecorderCommands.h"
#include "agent/core/state/GlobalVars.h"
#include "backends/headless/views/WebView.h"
#include "platform/Foundation/NSException.h"
#include "tests/support/Screen.h"

namespace tarni {
namespace {

using test::complete;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kOnePixel = "data:image/jpeg;base64,R0lGODlhAQABAAAAACwAAAAAAQABAAA=";

class WebViews : public test::Screen {
 protected:
  WebViews() {
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
};

TEST_F(WebViews, AreAskedOnceAPassAndAgainUnlessTheyLoad) {
  const auto web = page();
  web->setLoading(true);
  pass();
  EXPECT_THAT(web->evaluatedScripts(), IsEmpty());
  web->setLoading(false);
  web->setEngine([](const std::string&) -> std::string {
    throw platform::NSException("PageGone", "the page is gone");
  });
  for (int tick = 0; tick < 5; ++tick) WebView().performRecorderAndPlaybackInjection();
  pass();
  EXPECT_THAT(web->evaluatedScripts(), ElementsAre("IsInjectionDone()"))
      << "passes do not pile up while the main thread is busy";
  pass();
  EXPECT_THAT(web->evaluatedScripts(), ElementsAre("IsInjectionDone()", "IsInjectionDone()"));
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
  web->setAnswer("startRecording()", "");
  GlobalVars::sharedInstance().set_webViewBase64Image(std::nullopt);
  pass();
  EXPECT_EQ(pendingSteps(), "[touched, touched]") << "those that wait are left";
  EXPECT_EQ(GlobalVars::sharedInstance()._webViewBase64Image(), kOnePixel);
}

TEST_F(WebViews, ModeThatCannotBeToldIsAnnouncedAllTheSame) {
  const auto impostor = plainView({});
  impostor->setClass(platform::uikit::UIWebView);
  EXPECT_THROW(complete(WebView().callJavaScriptFunctionWithoutOutPut(impostor, "f()")),
               platform::NSException);
  std::size_t count = 0;
  for (const auto& [command, toast] :
       {std::pair("please STARTObjectSpy now", "Switched to Spy Mode"),
        std::pair("StopOBJECTspy!", "Switched to Recording Mode")}) {
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
