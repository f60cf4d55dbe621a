// Pages in web views: one suite for every backend that has them. Qt's stand on a display, where a
// real hand can press what they show.
#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <optional>
#include <ostream>

#include "tests/support/Desktop.h"
#include "tests/support/Program.h"
#include "tests/support/SessionWire.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

struct Point {
  int x;
  int y;
};

// `picture` is where in the window a hand presses the picture of the page; somebody presses it all
// by himself in a program that needs no display. `view` is the kind of web view, where there are
// two.
struct PageSubject {
  std::string name;
  std::string program;
  std::optional<Point> picture;
  bool isOnWayland = false;
  std::string view = "";
};

void PrintTo(const PageSubject& subject, std::ostream* output) {
  *output << subject.name;
}

class ConformancePages : public testing::TestWithParam<PageSubject> {
 protected:
  void SetUp() override {
    Program::Environment environment = agentEnvironment();
    environment["TARNI_SCRIPTS"] = "file://" + built("share/tarni/webscripts");
    if (GetParam().picture) {
      desktop_ = Desktop::make(GetParam().isOnWayland ? 1 : 0, 1000, 800);
      environment.merge(Program::Environment{{"HOME", session_.path},
                                             {"XDG_RUNTIME_DIR", session_.path},
                                             {"QT_QUICK_BACKEND", "software"},
                                             {"QTWEBENGINE_DISABLE_SANDBOX", "1"}});
      desktop_->addTo(environment);
      // The engine of Qt 6 frees objects of its own as if they were smaller.
      environment["ASAN_OPTIONS"] += ":new_delete_type_mismatch=0";
    }
    environment["TARNI_SESSION"] = session_.socket();
    std::vector command = {built("bin/" + GetParam().program),
                           built("share/tarni/pages/form.html")};
    if (!GetParam().view.empty()) command.push_back(GetParam().view);
    program_ = std::make_unique<Program>(command, environment);
  }

  Playback& playback() {
    if (!playback_) playback_.emplace();
    return *playback_;
  }
  void pressPicture() const {
    const auto windows = desktop_->windows();
    if (windows.empty()) return;
    const auto [x, y] = *GetParam().picture;
    desktop_->click(static_cast<int>(windows[0].x) + x, static_cast<int>(windows[0].y) + y);
  }

  const SessionFolder session_;
  std::unique_ptr<Desktop> desktop_;
  std::unique_ptr<Program> program_;

 private:
  std::optional<Playback> playback_;
};

// Where there is a hand to compare with.
class ConformancePagesOnDisplay : public ConformancePages {};

const std::vector<PageSubject> kOffDisplay = {
    {"PagesHeadless", "tarni-headless-page", {}},
    {"PagesIOS", "ios-page", {}, false, "UIWebView"},
    {"PagesIOSWebKit", "ios-page", {}, false, "WKWebView"}};
const std::vector<PageSubject> kOnDisplay = {
    {"PagesQt5", "web-sample-5", Point{175, 272}},
    {"PagesQt6", "web-sample-6", Point{175, 270}},
    {"PagesQuick5", "web-quick-sample-5", Point{172, 285}},
    {"PagesQuick6", "web-quick-sample-6", Point{172, 245}},
    {"PagesQt5Wayland", "web-sample-5", Point{175, 272}, true},
    {"PagesQt6Wayland", "web-sample-6", Point{175, 270}, true}};

std::string nameOf(const testing::TestParamInfo<PageSubject>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Off, ConformancePages, testing::ValuesIn(kOffDisplay), nameOf);
INSTANTIATE_TEST_SUITE_P(On, ConformancePages, testing::ValuesIn(kOnDisplay), nameOf);
INSTANTIATE_TEST_SUITE_P(On, ConformancePagesOnDisplay, testing::ValuesIn(kOnDisplay), nameOf);

// Found, awaited and acted on like views.
TEST_P(ConformancePages, StandBelowTheirViewInTheTreeOfTheSession) {
  const SessionWire wire(session_.socket());
  const json send = {{"class", "button"}, {"text", "Send order"}};
  wire.await({{"find", send}, {"is", "visible"}}, 20'000);
  // Who presses the picture by himself leaves off when the port is asked for something.
  playback().await("FORM", "", "");
  // A page that loads what stands in it has no elements meanwhile.
  json button;
  ASSERT_TRUE(eventually([&] { return !(button = wire.find(send)).is_null(); }));
  const json tree = wire.ask("tree.get", json::object());
  std::map<long, long> parents;
  for (const json& one : tree["elements"]) {
    parents[one["element"].get<long>()] = one.value("parent", 0L);
  }
  long above = button["element"];
  while (above != 0 && above != button["page"]) above = parents[above];
  EXPECT_EQ(above, button["page"]) << "it stands in its web view";
  EXPECT_NE(parents[above], 0) << "which stands in a window";

  const json field = {
      {"element", wire.find({{"class", "input"}, {"within", button["page"]}})["element"]}};
  wire.ask("element.setText", {{"element", field["element"]}, {"text", "Ada"}});
  wire.await({{"element", field["element"]}, {"textIs", "Ada"}});
  const auto refusal = [&](const char* method, const json& parameters) {
    wire.send(method, parameters, 7);
    return wire.answer()["error"]["data"]["error"];
  };
  EXPECT_EQ(refusal("element.click", {{"element", button["element"]}, {"button", "nix"}}),
            "invalid argument");
  EXPECT_EQ(refusal("page.find", {{"css", "a"}, {"text", "Terms"}}), "invalid selector");
  const json press = {{"element", button["element"]},
                      {"button", "middle"},
                      {"count", 2},
                      {"modifiers", "Shift"},
                      {"x", 9},
                      {"y", 5}};
  if (desktop_) {
    wire.ask("page.evaluate",
             {{"script",
               "addEventListener('mousedown', (e) => { const { left, top } = "
               "document.querySelector('button').getBoundingClientRect(); window.told = "
               "[e.isTrusted, e.button, e.detail, "
               "e.shiftKey, Math.round(e.clientX - left), Math.round(e.clientY - top)].join(); "
               "}, true)"}});
    wire.ask("element.click", press);
    EXPECT_TRUE(eventually([&] {
      return wire.ask("page.evaluate", {{"script", "window.told"}})["text"] == "true,1,2,true,9,5";
    })) << wire.ask("page.evaluate", {{"script", "window.told"}});
    EXPECT_THAT(wire.ask("page.find", {{"xpath", "//input[@name='code']"}})["elements"], SizeIs(1))
        << "in a frame";
  } else {
    EXPECT_EQ(refusal("element.click", press), "unsupported operation");
  }
  wire.ask("element.click", {{"element", button["element"]}});
  wire.await({{"find", {{"class", "output"}}}, {"textIs", "sent by Ada"}});
  const json changes = wire.ask("tree.get", {{"since", tree["version"]}});
  EXPECT_FALSE(changes["whole"]);
  EXPECT_THAT(changes["elements"].dump(), HasSubstr("sent by Ada"));
}

TEST_P(ConformancePages, AreRecordedSearchedTypedIntoClickedAndRead) {
  const Wire recorder(kRecorderPort);
  recorder.readMessage();
  json steps;
  const auto press = [&] {
    if (desktop_) pressPicture();
    try {
      steps = json::parse(recorder.readMessage(2500ms));
      return steps[0]["arguments"][0]["mode"] == "web";
    } catch (const std::exception&) {
      return false;  // the page was not there yet
    }
  };
  ASSERT_TRUE(eventually(press, 90s)) << program_->output();
  const json& object = steps[0]["arguments"][0];
  EXPECT_EQ(steps[0]["action"], "ClickImage");
  EXPECT_EQ(object["className"], "IMG");
  EXPECT_EQ(object["sahiText"], "Logo");
  EXPECT_EQ(steps[0]["arguments"][1], (json{{"type", "string"}, {"data", ""}}));
  EXPECT_THAT(object["ObjectImage"].get<std::string>(), HasSubstr("/9j/")) << "a picture";

  const std::string form = playback().await("FORM", "", "");
  const auto inside = playback().ask(
      {{"functionname", "findelementsinsideelement"}, {"tagname", "BUTTON"}, {"datavalue", form}});
  EXPECT_THAT(inside, SizeIs(2));
  EXPECT_THAT(playback().find("button"), SizeIs(4));
  EXPECT_THAT(playback().find("BUTTON", "text", "Send order"), SizeIs(1));
  EXPECT_THAT(playback().find("BUTTON", "text", "Send"), IsEmpty());
  EXPECT_THAT(playback().find("", "partialtext", "SEND o"), SizeIs(1));
  EXPECT_THAT(playback().find("A", "xpath", "//a[@href='next.html']"), SizeIs(1));
  EXPECT_THAT(playback().find("BUTTON", "xpath", "//a[@href='next.html']"), IsEmpty());
  EXPECT_THAT(playback().find("", "colour", "red"), IsEmpty());
  EXPECT_THAT(playback().one("IMG", "text", "Logo"), StartsWith("web-"));
  EXPECT_THAT(playback().one("UIButton", "text", "Close order"), Not(StartsWith("web-")))
      << "a page answers only what native views do not";
  EXPECT_THAT(playback().find(""), Each(Not(StartsWith("web-"))));

  const std::string text = "'\"\\ \u2028 {} </script> 🦊 é ');alert('" + std::string(1000, 'x');
  const std::string field = playback().one("INPUT", "text", "Customer");
  playback().command("sendkeysonelement", field, "Someone else");
  EXPECT_EQ(playback().command("sendkeysonelement", field, text), json::array());
  EXPECT_EQ(playback().output("gettext", field), text);
  playback().command("sendkeysonelement", field, "Ada");
  const std::string button = playback().one("BUTTON", "text", "Send order");
  for (const std::string& gone : {field, std::string("web-"), std::string("web-1-99999999999")}) {
    for (const char* command : {"gettext", "clickelement", "sendkeysonelement"}) {
      EXPECT_EQ(playback().command(command, gone, "x"), json::array()) << command << " " << gone;
    }
  }
  EXPECT_EQ(playback().command("clickelement", button), json::array());
  const std::string said = playback().await("OUTPUT", "text", "sent by Ada");
  EXPECT_EQ(playback().output("gettext", said), "sent by Ada");
}

// Pages see of the channel's mouse and keyboard what they see of a person's.
TEST_P(ConformancePagesOnDisplay, WhatTheChannelDoesThereIsNotToldAsAPersons) {
  const Wire recorder(kRecorderPort);
  recorder.readMessage();
  const auto next = [&recorder] {
    json steps = json::parse(recorder.readMessage(2500ms));
    return steps.empty() ? json() : steps[0];
  };
  ASSERT_TRUE(eventually(
      [&] {
        pressPicture();
        try {
          return next()["action"] == "ClickImage";
        } catch (const std::exception&) {
          return false;  // the page was not there yet
        }
      },
      90s));
  const SessionWire wire(session_.socket());
  const auto middleOf = [&](const char* element) {
    const json rect = wire.find({{"class", element}})["rect"];
    return json{{"x", rect["x"].get<double>() + rect["width"].get<double>() / 2},
                {"y", rect["y"].get<double>() + rect["height"].get<double>() / 2}};
  };
  const auto press = [&](const char* element) {
    wire.ask("input.pointer",
             {{"steps", {{{"move", middleOf(element)}}, {{"down", "left"}}, {{"up", "left"}}}}});
  };
  const json field = wire.find({{"class", "input"}});
  const std::vector<std::function<void()>> acts = {
      [&] { press("input"); },
      [&] {
        wire.ask("input.text", {{"text", "Own"}});
      },
      [&] {
        wire.ask("input.keys", {{"steps", {"a", "Tab"}}});
      },
      [&] { press("select"); },
      [&] {
        wire.ask("input.keys", {{"steps", {"ArrowDown", "Enter"}}});
      },
      [&] { press("img"); },
      [&] {
        wire.ask("element.setText", {{"element", field["element"]}, {"text", "Other"}});
      },
      [&] {
        wire.ask("page.evaluate", {{"script", "document.execCommand('insertText',false,'1')"}});
      },
      [&] { press("input"); },
  };
  for (const auto& act : acts) {
    act();
    wire.ask("wait.rest", {{"quiet", 50}});
  }
  EXPECT_ANY_THROW(FAIL() << next().dump(2));
  // With no move of the pointer before.
  desktop_->type("x");
  pressPicture();
  const json typed = next();
  EXPECT_EQ(typed["action"], "TypeTextOnEditBox");
  EXPECT_THAT(typed["arguments"][1]["data"].get<std::string>(), HasSubstr("x"));
}

TEST_P(ConformancePages, GoingAwayDuringCallsAreAnsweredAndFollowed) {
  const std::string link = playback().await("A", "text", "Terms");
  const auto line = [](const char* name, const char* tag, const std::string& value) {
    const json keys = {{"functionname", name}, {"tagname", tag}, {"accessorvalue", value}};
    return keys.dump() + "\r\n";
  };
  std::string lines = line("clickelement", "", link);
  for (int i = 0; i < 20; ++i)
    lines += line("findelements", "BUTTON", "") + line("gettext", "", link);
  const Wire& wire = playback().wire();
  wire.send(lines);
  for (int i = 0; i < 41; ++i) EXPECT_TRUE(json::accept(wire.readMessage()));
  EXPECT_THAT(playback().await("H1", "text", "Terms"), StartsWith("web-"));
  EXPECT_THAT(playback().find("BUTTON"), IsEmpty());
  EXPECT_EQ(playback().output("gettext", link), std::nullopt);
}

}  // namespace
}  // namespace tarni::test
