// What the session channel's recorder tells of a quick hand, and of what a person did not do.
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <map>

#include "host/session/Step.h"
#include "tests/support/Display.h"
#include "tests/support/SessionWire.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using nlohmann::json;
using Words = std::vector<std::string>;

class Pace : public testing::TestWithParam<std::string> {
 protected:
  // Where the middle of what shows the text is on the screen.
  std::pair<std::string, std::string> middleOf(const json& selector) const {
    const json found = {{"element", wire_.find(selector)["element"]}};
    const json rect = wire_.ask("element.describe", found)["description"]["screenRect"];
    const auto middle = [&rect](const char* at, const char* length) {
      return std::to_string(
          static_cast<int>(rect[at].get<double>() + rect[length].get<double>() / 2));
    };
    return {middle("x", "width"), middle("y", "height")};
  }
  Words steps() const {
    wire_.ask("app.info", json::object());
    std::map<long, std::string> steps;
    for (const json& step : wire_.told()) {
      steps[step["order"]] = host::Step(step).inWords();
    }
    Words words;
    for (const auto& [order, step] : steps) words.push_back(step);
    return words;
  }

  const Display display_{1024, 900};
  const SessionFolder folder_;
  const Program program_{{built("bin/" + GetParam())}, [this] {
                           auto environment = display_.environment();
                           environment["LD_PRELOAD"] = preload(built("lib/libtarni.so"));
                           environment["TARNI_SESSION"] = folder_.socket();
                           environment["QT_QUICK_BACKEND"] = "software";
                           return environment;
                         }()};
  const SessionWire wire_{folder_.socket()};
};
INSTANTIATE_TEST_SUITE_P(Of, Pace,
                         testing::Values("qt-controls-5", "qt-controls-6", "quick-controls-5",
                                         "quick-controls-6"),
                         [](const auto& info) {
                           return (info.param.starts_with("qt") ? "Widgets" : "Quick") +
                                  info.param.substr(info.param.size() - 1);
                         });

TEST_P(Pace, NothingOfAQuickHandIsLostAndNothingIsInvented) {
  wire_.await({{"find", {{"text", "Press"}}}}, 20'000);
  wire_.ask("record.start", json::object());
  const json press = {{"text", "Press"}, {"kind", "UIButton"}};
  const auto [pressX, pressY] = middleOf(press);
  const auto [toggleX, toggleY] = middleOf({{"text", "Toggle"}, {"kind", "UIButton"}});
  const auto [lineX, lineY] = middleOf({{"kind", "UITextField"}});
  Words hand = {"xdotool"};
  Words wanted;
  const auto does = [&](const Words& words, const std::string& step) {
    hand.insert(hand.end(), words.begin(), words.end());
    wanted.push_back(step);
  };
  for (int turn = 0; turn < 15; ++turn) {
    does({"mousemove", pressX, pressY, "click", "1"}, "click UIButton \"Press\"");
    does({"mousemove", toggleX, toggleY, "click", "1"}, "click UIButton \"Toggle\"");
  }
  does({"mousemove", pressX, pressY, "click", "--repeat", "2", "--delay", "30", "1"},
       "double-click UIButton \"Press\"");
  does({"mousemove", lineX, lineY, "click", "1"}, "click UITextField \"Line\"");
  run(hand, display_.environment());
  display_.type("Ada Lovelace");
  wanted.emplace_back("type UITextField \"Line\" = Ada Lovelace");
  display_.key("Tab");
  wanted.emplace_back("key Tab");
  EXPECT_TRUE(eventually([&] { return steps() == wanted; }));
  EXPECT_EQ(steps(), wanted);
  // The channel's own hands leave nothing.
  wire_.ask("element.click", {{"element", wire_.find(press)["element"]}});
  wire_.ask("input.keys", {{"steps", {"Control+a"}}});
  wire_.ask("record.stop", json::object());
  run({"xdotool", "click", "1"}, display_.environment());
  wire_.ask("wait.rest", {{"quiet", 200}});
  EXPECT_EQ(steps(), wanted);
}

// What the channel does leaves texts and the focus behind, at which the stream of steps looks.
TEST_P(Pace, TheStreamOfStepsTellsOfNothingThatTheChannelDidAndOfAllThatAPersonDid) {
  wire_.await({{"find", {{"text", "Press"}}}}, 20'000);
  const Wire recorder(kRecorderPort);
  recorder.readMessage();
  const auto named = [this](const char* identifier) {
    return wire_.find({{"identifier", identifier}})["element"];
  };
  const json line = named("line");
  const json count = named("count");
  const json check = named("check");
  const json fields = wire_.ask("element.find", {{"kind", "UITextField"}})["elements"];
  const auto another =
      std::ranges::find_if(fields, [&line](const json& one) { return one["element"] != line; });
  ASSERT_NE(another, fields.end());
  const auto press = middleOf({{"text", "Press"}, {"kind", "UIButton"}});
  const auto field = middleOf({{"kind", "UITextField"}});
  const auto click = [this](const auto& place) {
    display_.click(std::stoi(place.first), std::stoi(place.second));
  };
  // Up to that of the press that ends what came before.
  const auto steps = [&] {
    Words words;
    click(press);
    while (words.empty() || words.back() != "ClickButton") {
      const json step = json::parse(recorder.readMessage())[0];
      const std::string text = step["arguments"][1]["data"];
      words.push_back(step["action"].get<std::string>() + (text.empty() ? "" : " = " + text));
    }
    return words;
  };
  const auto does = [this](const char* method, const json& parameters) {
    return [this, method, parameters] { wire_.ask(method, parameters); };
  };
  const auto types = [&](const char* key) {
    return [this, key] { key[1] == 0 ? display_.type(key) : display_.key(key); };
  };
  const auto waits = [this] { wire_.ask("wait.rest", {{"quiet", 250}, {"timeout", 2000}}); };
  const Words nothing{"ClickButton"};
  const struct {
    std::string what;
    std::vector<std::function<void()>> acts;
    Words told;
  } cases[] = {
      {"text set", {does("element.setText", {{"element", line}, {"text", "own"}})}, nothing},
      {"a filled field turned to", {does("element.focus", {{"element", line}})}, nothing},
      {"a filled field clicked", {does("element.click", {{"element", line}})}, nothing},
      {"text typed", {does("input.text", {{"element", line}, {"text", "own"}})}, nothing},
      {"keys",
       {does("input.keys", {{"element", line}, {"steps", {"Control+a", "o", "w", "n"}}})},
       nothing},
      {"keys in several fields",
       {does("input.keys", {{"element", line}, {"steps", {"x", "Tab", "1", "Tab"}}})},
       nothing},
      {"a value set where the focus is",
       {does("element.click", {{"element", count}}),
        does("element.setValue", {{"element", count}, {"value", 7}})},
       nothing},
      {"the own text typed anew by a person",
       {does("element.setText", {{"element", line}, {"text", "own"}}), [&] { click(field); }, waits,
        types("ctrl+a"), types("o"), types("w"), types("n")},
       {"Click", "TypeTextOnEditBox = own", "ClickButton"}},
      {"a person's text turned away from",
       {[&] { click(field); }, waits, types("ctrl+a"), types("m"), types("e"), waits,
        does("element.setText", {{"element", (*another)["element"]}, {"text", "3"}}), waits},
       {"Click", "TypeTextOnEditBox = me", "ClickButton"}},
      {"a person's text written over",
       {[&] { click(field); }, waits, types("ctrl+a"), types("u"), types("s"), waits,
        does("element.setText", {{"element", line}, {"text", "own"}}), waits},
       {"Click", "TypeTextOnEditBox = us", "ClickButton"}},
      {"a menu opened where a person pointed last",
       {does("element.click", {{"element", wire_.find({{"text", "File"}})["element"]}}),
        does("input.keys", {{"steps", {"Escape"}}})},
       nothing},
      {"a box ticked", {does("element.setValue", {{"element", check}, {"value", true}})}, nothing},
  };
  for (const auto& [what, acts, told] : cases) {
    for (const auto& act : acts) {
      act();
      waits();
    }
    Words came = steps();
    // A person's text that stays where the focus is is told again with the next tap.
    if (told != nothing && came.front().starts_with("TypeText")) came.erase(came.begin());
    EXPECT_EQ(came, told) << what;
  }
}

}  // namespace
}  // namespace tarni::test
