// The commands inside a web page.
#include "agent/commands/WebViewCommands.h"

#include "agent/core/state/GlobalVars.h"
#include "backends/headless/views/WebView.h"
#include "platform/Foundation/NSException.h"
#include "tests/elements/CommandScreen.h"

namespace tarni::test {
namespace {

using headless::WebView;

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
  const std::size_t evaluated = page->evaluatedScripts().size();
  for (const char* name : {"swipeto", "isselected", "findeditablecomponents", "fly", ""}) {
    command({{"functionname", name}});
  }
  EXPECT_EQ(page->evaluatedScripts().size(), evaluated) << "others leave the page alone";
}

TEST_F(WebCommand, ArgumentsAreEscapedForTheScript) {
  EXPECT_EQ(escapedForJavaScript("it's \"x\""), "it\\'s \\\"x\\\"");
  EXPECT_EQ(escapedForJavaScript("a\nb\r\t\x01\x7F"), "a\\x0ab\\x0d\\x09\\x01\\x7f");
  EXPECT_EQ(escapedForJavaScript("\u2028|\u2029|\u2027"), "\\u2028|\\u2029|\u2027");
  EXPECT_EQ(escapedForJavaScript(std::string("\0", 1)), "\\x00");
  command({{"functionname", "clickelement"}, {"accessorvalue", "');alert('"}});
  EXPECT_EQ(lastScript(), "performClick('\\');alert(\\'')");
}

TEST_F(WebCommand, ThatRaisesIsAnsweredWithTheReasonButAClickGoesOnAndShowsIt) {
  page->setEngine([](const std::string&) -> std::string {
    throw platform::NSException("JSException", "the page is gone");
  });
  const Json reason = Json::array({{{"exceptionmsg", "the page is gone"}}});
  for (const char* name :
       {"findelements", "findelementsinsideelement", "sendkeysonelement", "gettext"}) {
    EXPECT_EQ(command({{"functionname", name}}), reason) << name;
  }
  EXPECT_EQ(command({{"functionname", "clickelement"}, {"accessorvalue", "7"}}), Json::array());
  drainMainQueue();
  ASSERT_EQ(environment.alerts().shown().size(), 1U);
  EXPECT_EQ(environment.alerts().shown()[0]->message, "the page is gone");
}

}  // namespace
}  // namespace tarni::test
