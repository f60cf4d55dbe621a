// Pages in a program as contexts.
#include <gmock/gmock.h>

#include "tests/webdriver/Driver.h"

namespace tarni::test {
namespace {

using nlohmann::json;

class WebDriverPages : public testing::TestWithParam<const char*> {
 protected:
  WebDriverPages() {
    client_.newSession({{"appium:app", built(GetParam())}, {"appium:autoWebview", true}});
  }
  json value(const std::string& method, const std::string& path,
             const json& body = json::object()) {
    return client_.inSession(method, path, body.dump()).value;
  }
  json run(const std::string& script, const json& arguments = json::array()) {
    return value("POST", "/execute/sync", {{"script", script}, {"args", arguments}});
  }
  std::string error(const std::string& method, const std::string& path, const json& body) {
    return client_.inSession(method, path, body.dump()).error();
  }
  json reference(const std::string& css) {
    return value("POST", "/element", {{"using", "css selector"}, {"value", css}});
  }

  Driver client_;
};

INSTANTIATE_TEST_SUITE_P(On, WebDriverPages,
                         testing::Values("bin/web-sample-5", "bin/web-sample-6"),
                         [](const auto& info) { return info.index == 0 ? "Qt5" : "Qt6"; });

TEST_P(WebDriverPages, AreFoundReadAndUsedWithRealInput) {
  EXPECT_EQ(value("GET", "/title"), "An order");
  const std::string field = "/element/" + client_.element("css selector", "input");
  value("POST", field + "/value", {{"text", "Ada Ä+"}});
  EXPECT_EQ(value("GET", field + "/property/value"), "Ada Ä+");
  EXPECT_EQ(value("GET", field + "/name"), "input");
  value("POST", field + "/clear");
  EXPECT_EQ(run("return arguments[0].value + document.activeElement.localName",
                json::array({reference("input")})),
            "input");
  const std::string box = "/element/" + client_.element("css selector", "input[type=checkbox]");
  EXPECT_EQ(value("GET", box + "/selected"), false);
  value("POST", box + "/click");
  EXPECT_EQ(value("GET", box + "/selected"), true);
  EXPECT_EQ(value("POST", "/elements", {{"using", "link text"}, {"value", "nix"}}), json::array());
  EXPECT_EQ(error("POST", "/element", {{"using", "xpath"}, {"value", "//["}}), "invalid selector");
  run("const veil = document.createElement('div'); veil.style = 'position:fixed;inset:0';"
      "document.body.append(veil);");
  EXPECT_EQ(error("POST", box + "/click", json::object()), "element click intercepted");
}

TEST_P(WebDriverPages, RunScriptsWithElementsPromisesAndFrames) {
  EXPECT_EQ(run("return [1, null, {a: arguments[0]}] // as it is", {5}),
            json({1, nullptr, {{"a", 5}}}));
  EXPECT_EQ(run("return Promise.resolve(3)"), 3);
  EXPECT_EQ(value("POST", "/execute/async",
                  {{"script", "setTimeout(() => arguments[0](7), 20)"}, {"args", json::array()}}),
            7);
  for (const char* const wrong :
       {"throw new Error('no')", "return {{", "const a = []; a[0] = a; return a"}) {
    EXPECT_EQ(error("POST", "/execute/sync", {{"script", wrong}, {"args", json::array()}}),
              "javascript error");
  }
  value("POST", "/timeouts", {{"script", 50}});
  EXPECT_EQ(error("POST", "/execute/async", {{"script", "1"}, {"args", json::array()}}),
            "script timeout");
  EXPECT_EQ(error("POST", "/frame", {{"id", 7}}), "no such frame");
  EXPECT_EQ(value("POST", "/frame", {{"id", reference("iframe")}}), nullptr);
  EXPECT_EQ(value("GET", "/element/" + client_.element("css selector", "[name=code]") +
                             "/attribute/placeholder"),
            "Code");
  EXPECT_EQ(error("POST", "/context", {{"name", "WEBVIEW_0"}}), "no such window");
  EXPECT_EQ(run("return document.querySelectorAll('input').length"), 1) << "still in the frame";
  value("POST", "/frame/parent");
  EXPECT_GT(run("return document.querySelectorAll('input').length"), 1);
}

TEST_P(WebDriverPages, ElementsBelongToTheirPageAndContext) {
  const std::string old = "/element/" + client_.element("css selector", "input");
  const std::string address = value("GET", "/url");
  EXPECT_EQ(error("POST", "/url", {{"url", "no address"}}), "invalid argument");
  value("POST", "/url", {{"url", address + "?again"}});
  EXPECT_EQ(value("GET", "/url"), address + "?again");
  EXPECT_EQ(error("GET", old + "/text", json::object()), "stale element reference");
  value("POST", "/back");
  EXPECT_EQ(value("GET", "/url"), address);
  value("POST", "/context", {{"name", "NATIVE_APP"}});
  EXPECT_EQ(value("GET", "/title"), "Tarni Web Sample");
  EXPECT_EQ(error("GET", old + "/text", json::object()), "no such element");
  EXPECT_EQ(error("POST", "/url", {{"url", address}}), "unsupported operation");
  EXPECT_NE(client_.element("link text", "Close order"), "");
}

TEST_P(WebDriverPages, SayThatADialogKeepsThemUntilItIsAnswered) {
  EXPECT_EQ(run("alert('Now?')"), nullptr);
  EXPECT_EQ(error("GET", "/title", json::object()), "unexpected alert open");
  EXPECT_EQ(value("GET", "/alert/text"), "Now?");
  value("POST", "/alert/accept");
  EXPECT_EQ(value("GET", "/title"), "An order");
}

}  // namespace
}  // namespace tarni::test
