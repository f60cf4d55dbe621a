// What the session channel's recorder tells of a quick hand, and of what is no person's.
#include <gmock/gmock.h>

#include <map>

#include "host/session/Step.h"
#include "tests/support/Display.h"
#include "tests/support/SessionWire.h"

namespace tarni::test {
namespace {

using nlohmann::json;
using Words = std::vector<std::string>;

class Pace : public testing::TestWithParam<std::string> {
 protected:
  // Where the middle of what shows the text is on the screen.
  std::pair<std::string, std::string> middleOf(const json& selector) const {
    json find = selector;
    find["all"] = false;
    const json found = wire_.ask("element.find", find)["elements"][0]["element"];
    const json rect =
        wire_.ask("element.describe", {{"element", found}})["description"]["screenRect"];
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
  wire_.ask("wait.for",
            {{"conditions", json::array({{{"find", {{"text", "Press"}}}}})}, {"timeout", 20'000}});
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
  const json button = wire_.ask("element.find", press)["elements"][0]["element"];
  wire_.ask("element.click", {{"element", button}});
  wire_.ask("input.keys", {{"steps", {"Control+a"}}});
  wire_.ask("record.stop", json::object());
  run({"xdotool", "click", "1"}, display_.environment());
  wire_.ask("wait.rest", {{"quiet", 200}});
  EXPECT_EQ(steps(), wanted);
}

}  // namespace
}  // namespace tarni::test
