// The session channel over the wire, on every backend, beside the fixed ports.
#include <gmock/gmock.h>

#include <map>

#include "tests/conformance/Subject.h"
#include "tests/support/SessionWire.h"

namespace tarni::test {
namespace {

using nlohmann::json;

class ConformanceSession : public Conformance {
 protected:
  void SetUp() override { start({{"TARNI_SESSION", folder_.socket()}}); }
  SessionWire client() const { return SessionWire(folder_.socket()); }
  static long handle(const SessionWire& client, const json& selector) {
    return client.find(selector)["element"];
  }
  static json shows(const std::string& text) {
    return {{"find", {{"kind", "UILabel"}, {"text", text}}}, {"is", "visible"}};
  }

  const SessionFolder folder_;
};
INSTANTIATE_TEST_SUITE_P(On, ConformanceSession, testing::ValuesIn(subjects()), subjectName);

TEST_P(ConformanceSession, ElementsStayAndTheTreeTellsWhatChanged) {
  const SessionWire one = client();
  const SessionWire other = client();
  const long field = handle(one, {{"placeholder", "User name"}});
  EXPECT_EQ(handle(other, {{"placeholder", "User name"}}), field) << "one handle for all clients";
  const json whole = one.ask("tree.get", json::object());
  EXPECT_TRUE(whole["whole"]);
  // A search over the fixed port makes its own identifiers void, and none of these.
  EXPECT_EQ(playback().find("UITextField").size(), 2U);
  const json answer = other.ask("element.setText", {{"element", field}, {"text", "Ada Ω 🐦"}});
  EXPECT_TRUE(answer["costs"].contains("cpuMs"));
  const json changes = one.ask("tree.get", {{"since", whole["version"]}});
  EXPECT_FALSE(changes["whole"]);
  EXPECT_LT(changes["elements"].size(), whole["elements"].size());
  const json described = one.ask("element.describe", {{"element", field}})["description"];
  EXPECT_EQ(described["text"], "Ada Ω 🐦");
  EXPECT_THAT(described["kinds"], testing::Contains("UITextField"));
  const std::string found = playback().one("UITextField", "text", "User name");
  EXPECT_EQ(playback().output("gettext", found), "Ada Ω 🐦") << "the fixed port sees the same";
}

// A client's copy of the tree, kept by what it is told of changes.
class TreeCopy {
 public:
  explicit TreeCopy(const SessionWire& wire) : wire_(wire) { update(); }

  // How many elements were told.
  std::size_t update() {
    const json answer =
        wire_.ask("tree.get", version_ == 0 ? json::object() : json{{"since", version_}});
    version_ = answer["version"];
    for (const json& gone : answer.value("gone", json::array())) elements_.erase(gone.get<long>());
    for (const json& one : answer["elements"]) elements_[one["element"].get<long>()] = one;
    return answer["elements"].size();
  }
  void expectWhole(const std::string& after) {
    const std::size_t told = update();
    std::map<long, json> whole;
    const json answer = wire_.ask("tree.get", json::object());
    for (const json& one : answer["elements"]) whole[one["element"].get<long>()] = one;
    // Where a caret blinks or a window comes up something may change between the two.
    if (answer["version"] != version_) return expectWhole(after);
    EXPECT_EQ(json(elements_), json(whole)) << after;
    EXPECT_GT(told, 0U) << after;
    EXPECT_LT(told, whole.size() + 1) << after;
  }

 private:
  const SessionWire& wire_;
  long version_ = 0;
  std::map<long, json> elements_;
};

TEST_P(ConformanceSession, WhatIsToldOfChangesAddsUpToTheTree) {
  const SessionWire one = client();
  TreeCopy copy(one);
  const auto click = [&](const std::string& text) {
    one.ask("element.click", {{"element", handle(one, {{"kind", "UIButton"}, {"text", text}})}});
  };
  one.ask("element.setText",
          {{"element", handle(one, {{"placeholder", "User name"}})}, {"text", "Ada"}});
  copy.expectWhole("a text");
  click("Log in");
  one.await(shows("Hello, Ada"));
  copy.expectWhole("a label");
  one.ask("element.setValue", {{"element", handle(one, {{"kind", "UISwitch"}})}, {"value", true}});
  copy.expectWhole("a switch");
  const json list = one.find({{"kind", "UITableView"}});
  if (list.contains("rows")) {
    EXPECT_EQ(list["rows"], 20);
    one.ask("element.scrollToText", {{"element", list["element"]}, {"text", "Row 20"}});
    copy.expectWhole("rows");
  }
  click(one.find({{"textContains", "details"}})["text"]);
  one.await(shows("Really?"));
  copy.expectWhole("a dialog that came");
  click("OK");
  one.await(shows("Accepted"));
  copy.expectWhole("a dialog that went");
}

// Otherwise who looks at a picture whenever something is painted would never come to rest. Where
// there is no other way, a frame draws each of the two pictures and one takes away what was drawn
// for it; frames that come soon after each other are told as one.
TEST_P(ConformanceSession, WhatIsPaintedIsToldAndAPictureIsNoPainting) {
  const SessionWire one = client();
  one.send("screen.watch", json::object(), 1);
  if (const json answer = one.answer(); answer.contains("error")) {
    EXPECT_EQ(answer["error"]["data"]["error"], "unsupported operation");
    return;
  }
  const json field = one.find({{"placeholder", "User name"}});
  const json window = one.ask("window.list", json::object())["windows"][0]["element"];
  one.ask("element.setText", {{"element", field["element"]}, {"text", "Ada"}});
  const auto isTold = [&] {
    return std::ranges::any_of(one.told(), [&](const json& told) {
      return std::ranges::find(told["windows"], window) != told["windows"].end();
    });
  };
  while (!isTold()) one.ask("app.info", json::object());
  // Where no caret blinks, which would be painted every half a second.
  one.ask("element.focus", {{"element", handle(one, {{"kind", "UISwitch"}})}});
  const auto rest = [&] { one.ask("wait.rest", {{"quiet", 700}}); };
  rest();
  const std::size_t before = one.told().size();
  one.ask("window.picture", {{"window", window}});
  one.ask("tree.get", {{"picture", true}});
  rest();
  const bool isPainted = GetParam().name == "Quick5";
  EXPECT_LE(one.told().size(), before + (isPainted ? 4 : 0)) << one.told().back();
}

TEST_P(ConformanceSession, APictureShowsNothingOfASecret) {
  const SessionWire one = client();
  const json field = {{"element", handle(one, {{"placeholder", "Password"}})}};
  const auto pictureWith = [&](const char* text, bool blurs) {
    one.ask("element.setText", {{"element", field["element"]}, {"text", text}});
    // Where no caret blinks, if it can be elsewhere.
    one.send("element.focus", {{"element", handle(one, {{"kind", "UISwitch"}})}}, 1);
    one.answer();
    one.ask("wait.rest", {{"quiet", 100}});
    const json picture =
        one.ask("window.picture", {{"window", field["element"]}, {"blurSecrets", blurs}});
    return picture["data"].get<std::string>();
  };
  EXPECT_TRUE(pictureWith("a", false) != pictureWith("a longer one", false));
  EXPECT_TRUE(pictureWith("a", true) == pictureWith("a longer one", true));
}

// By a mouse and a keyboard, or by what a platform of fingers has in their place.
TEST_P(ConformanceSession, PointerAndKeysTapTypeAndDrag) {
  const SessionWire one = client();
  const auto press = [&](const json& target) {
    one.ask("input.pointer",
            {{"steps", {{{"move", target}}, {{"down", "left"}}, {{"up", "left"}}}}});
  };
  const json field = {{"element", handle(one, {{"placeholder", "User name"}})}};
  press(field);
  one.ask("input.text", {{"text", "Ada Ω"}});
  one.ask("input.keys",
          {{"steps", {"Backspace", "b", {{"down", "Shift"}}, "c", {{"up", "Shift"}}}}});
  EXPECT_EQ(one.ask("element.describe", field)["description"]["text"], "Ada bC");
  one.ask("input.keys", {{"steps", {"Control+a", "Backspace"}}});
  one.ask("input.text", {{"text", "Grace"}});
  // A press that leaves the button before it ends is none.
  const json button = {{"element", handle(one, {{"kind", "UIButton"}, {"text", "Log in"}})}};
  one.ask("input.drag", {{"from", button}, {"to", field}});
  EXPECT_THAT(one.ask("element.find", shows("Hello, Grace")["find"])["elements"],
              testing::IsEmpty());
  press(button);
  one.await(shows("Hello, Grace"));
  for (const auto& [method, parameters] :
       {std::pair<const char*, json>{"input.keys", {{"steps", {"NoKey"}}}},
        {"input.pointer", {{"steps", {{{"down", "no button"}}}}}}}) {
    one.send(method, parameters, 3);
    EXPECT_TRUE(one.answer().contains("error")) << method;
  }
}

// The other client is answered meanwhile, and what it does ends the wait.
TEST_P(ConformanceSession, AWaitIsWokenByAnotherClient) {
  const SessionWire waiting = client();
  const SessionWire acting = client();
  waiting.send("wait.for", {{"conditions", json::array({shows("Hello, Grace")})}}, 7);
  acting.ask("element.setText",
             {{"element", handle(acting, {{"placeholder", "User name"}})}, {"text", "Grace"}});
  acting.ask("element.click", {{"element", handle(acting, {{"text", "Log in"}})}});
  const json answer = waiting.answer();
  EXPECT_EQ(answer["id"], 7);
  EXPECT_TRUE(answer["result"].contains("waitedMs")) << answer;
}

TEST_P(ConformanceSession, ADialogThatAClickOpensKeepsNobodyFromBeingAnswered) {
  const SessionWire one = client();
  const long details = handle(one, {{"textContains", "details"}});
  one.ask("element.focus", {{"element", handle(one, {{"placeholder", "User name"}})}});
  one.ask("element.click", {{"element", details}});
  one.await(shows("Really?"));
  std::map<json, json> isKey;
  const json windows = one.ask("window.list", json::object())["windows"];
  for (const json& window : windows) {
    isKey[window["element"]] = window["key"];
  }
  const json focused = one.ask("element.find", {{"focused", true}})["elements"];
  for (const json& element : focused) {
    const json whole = one.ask("element.describe", {{"element", element["element"]}});
    EXPECT_EQ(isKey[whole["description"]["window"]], true) << element << " is behind the dialog";
  }
  const long button = handle(one, {{"kind", "UIButton"}, {"text", "OK"}});
  one.ask("element.click", {{"element", button}});
  one.await(shows("Accepted"));
  one.await({{"element", button}, {"is", "gone"}});
}

TEST_P(ConformanceSession, BadInputIsAnsweredAndHarmsNobody) {
  const SessionWire one = client();
  const std::pair<const char*, const char*> cases[] = {
      {"nonsense", "parse error"},
      {"[]", "invalid request"},
      {R"({"jsonrpc":"2.0","id":1,"method":5})", "invalid request"},
      {R"({"jsonrpc":"2.0","id":1,"method":"nothing"})", "unknown method"},
      {R"({"jsonrpc":"2.0","id":1,"method":"element.click"})", "invalid argument"},
      {R"({"jsonrpc":"2.0","id":1,"method":"app.info","params":{"x":1}})", "invalid argument"},
      {R"({"jsonrpc":"2.0","id":1,"method":"element.find"})", "invalid selector"},
      {R"({"jsonrpc":"2.0","id":1,"method":"wait.for","params":{"timeout":1,"conditions":)"
       R"([{"find":{"tet":"nobody"},"is":"gone"}]}})",
       "invalid argument"},
      {R"({"jsonrpc":"2.0","id":1,"method":"wait.for","params":{"timeout":1,"conditions":)"
       R"([{"find":{"text":"nobody"},"textContain":"x"}]}})",
       "invalid argument"},
      {R"({"jsonrpc":"2.0","id":1,"method":"input.drag","params":{"from":{"elment":1,"x":1,"y":1},)"
       R"("to":{"x":1,"y":1}}})",
       "invalid argument"},
      {R"({"jsonrpc":"2.0","id":1,"method":"element.describe","params":{"element":99999999}})",
       "no such element"},
      {R"({"jsonrpc":"2.0","id":1,"method":"wait.for","params":{"timeout":1,"conditions":)"
       R"([{"find":{"text":"nobody"}}]}})",
       "timeout"},
      {R"({"jsonrpc":"2.0","id":1,"method":"wait.for","params":{"conditions":)"
       R"([{"window":"","is":"visible"}]}})",
       "invalid argument"},
  };
  for (const auto& [line, name] : cases) {
    one.sendLine(line);
    EXPECT_EQ(one.answer()["error"]["data"]["error"], name) << line;
  }
  one.sendLine(R"({"jsonrpc":"2.0","id":null,"method":"cancel","params":{"request":1}})");
  EXPECT_EQ(one.answer()["result"]["cancelled"], false) << "an id that is null is one";
  // Half a line of one that goes, a wait of one that goes, many requests of one that reads late.
  client().sendRaw(R"({"jsonrpc":)");
  client().send("wait.for", {{"conditions", json::array({shows("never")})}}, 1);
  constexpr int kMany = 2000;
  for (int id = 1; id <= kMany; ++id) one.send("app.info", json::object(), id);
  for (int id = 1; id <= kMany; ++id) ASSERT_TRUE(one.answer().contains("result"));
  EXPECT_TRUE(program_->isRunning());
  EXPECT_EQ(playback().find("UIButton", "text", "Log in").size(), 1U);
}

}  // namespace
}  // namespace tarni::test
