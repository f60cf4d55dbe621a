// The commands inside a web page.
#include "agent/commands/WebViewCommands.h"

#include "agent/core/state/GlobalVars.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/WebView.h"
#include "platform/Foundation/NSException.h"
#include "tests/elements/CommandScreen.h"

namespace tarni::test {
namespace {

using headless::WebView;
using testing::ElementsAre;
using testing::IsEmpty;

class WebCommand : public CommandScreen {
 protected:
  WebCommand() { GlobalVars::sharedInstance().set_currentWebView(page); }

  std::string lastScript() const {
    return page->evaluatedScripts().empty() ? "(none)" : page->evaluatedScripts().back();
  }

  std::shared_ptr<WebView> page = add<WebView>().get();
};

TEST_F(WebCommand, CallsTheScriptOfEachCommand) {
  command({{"functionname", "FindElements"},
           {"tagname", "INPUT"},
           {"accessortype", "XPath"},
           {"accessorvalue", "V"}});
  EXPECT_EQ(lastScript(), "findElements('INPUT','xpath','V')");
  command({{"functionname", "findelementsinsideelement"},
           {"tagname", "a"},
           {"accessortype", "text"},
           {"accessorvalue", "b"},
           {"datavalue", "c"}});
  EXPECT_EQ(lastScript(), "findElementsInsideElement('a','text','b','c')");
  command({{"functionname", "clickelement"}, {"accessorvalue", "7"}});
  EXPECT_EQ(lastScript(), "performClick('7')");
  command({{"functionname", "sendkeysonelement"}, {"accessorvalue", "7"}, {"datavalue", "hi"}});
  EXPECT_EQ(lastScript(), "performTypeText('7','hi')");
  command({{"functionname", "gettext"}});
  EXPECT_EQ(lastScript(), "tarni_getText('')");
}

TEST_F(WebCommand, OtherCommandsLeaveThePageAlone) {
  for (const char* name : {"swipeto", "isselected", "findeditablecomponents", "fly", ""}) {
    command({{"functionname", name}});
  }
  EXPECT_THAT(page->evaluatedScripts(), IsEmpty());
}

TEST_F(WebCommand, PageThatWasNeverFoundReadyIsLeftAlone) {
  GlobalVars::sharedInstance().set_currentWebView(nullptr);
  EXPECT_EQ(answer(R"({"functionname":"gettext"})"), "[]");
  EXPECT_THAT(page->evaluatedScripts(), IsEmpty());
}

TEST_F(WebCommand, ArgumentsAreEscapedForTheScript) {
  EXPECT_EQ(escapedForJavaScript("\\UIView[0]"), "\\\\UIView[0]");
  EXPECT_EQ(escapedForJavaScript("it's \"x\""), "it\\'s \\\"x\\\"");
  EXPECT_EQ(escapedForJavaScript("a\nb\r\t\x01\x7F"), "a\\x0ab\\x0d\\x09\\x01\\x7f");
  EXPECT_EQ(escapedForJavaScript("\u2028|\u2029|\u2027"), "\\u2028|\\u2029|\u2027");
  EXPECT_EQ(escapedForJavaScript("🦊 é"), "🦊 é");
  EXPECT_EQ(escapedForJavaScript(std::string("\0", 1)), "\\x00");
  command({{"functionname", "clickelement"}, {"accessorvalue", "');alert('"}});
  EXPECT_EQ(lastScript(), "performClick('\\');alert(\\'')");
}

TEST_F(WebCommand, ClickThatRaisesIsShownAndTheNativeClickGoesOn) {
  page->setEngine([](const std::string& script) -> std::string {
    if (script.starts_with("performClick")) {
      throw platform::NSException("JSException", "no such element");
    }
    return {};
  });
  EXPECT_EQ(command({{"functionname", "clickelement"}, {"accessorvalue", "7"}}), Json::array());
  drainMainQueue();
  ASSERT_EQ(environment.alerts().shown().size(), 1U);
  EXPECT_EQ(environment.alerts().shown()[0]->message, "no such element");
}

TEST_F(WebCommand, OtherCommandThatRaisesIsAnsweredWithTheReason) {
  page->setEngine([](const std::string&) -> std::string {
    throw platform::NSException("JSException", "the page is gone");
  });
  for (const char* name :
       {"findelements", "findelementsinsideelement", "sendkeysonelement", "gettext"}) {
    const Json expected = Json::array({{{"exceptionmsg", "the page is gone"}}});
    EXPECT_EQ(command({{"functionname", name}}), expected) << name;
  }
}

}  // namespace
}  // namespace tarni::test
