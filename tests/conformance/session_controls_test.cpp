// The session channel on every kind of control, on widgets and items of Qt, and what the fixed port
// types into each.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

#include "tests/conformance/Subject.h"
#include "tests/support/SessionWire.h"

namespace tarni::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

class SessionControls : public OfSubjects {
 protected:
  void SetUp() override {
    start({{"TARNI_SESSION", folder_.socket()}});
    wire_ = std::make_unique<SessionWire>(folder_.socket());
  }
  bool isQuick() const { return GetParam().name.starts_with("Quick"); }
  json ask(const std::string& method, const json& parameters) const {
    return wire_->ask(method, parameters);
  }
  json find(const json& selector) const { return wire_->find(selector); }
  long named(const std::string& identifier) const {
    return find({{"identifier", identifier}})["element"];
  }
  json described(long element) const {
    return ask("element.describe", {{"element", element}})["description"];
  }
  void awaitOf(json what, const std::string& is) const {
    what["is"] = is;
    wire_->await(what);
  }
  void awaitText(const std::string& text) const {
    awaitOf({{"find", {{"kind", "UILabel"}, {"text", text}}}}, "there");
  }
  // A choice of the control's, as a person makes it: the program hears of it and says so.
  void choose(long element, const json& value, const std::string& heard) const {
    ask("element.setValue", {{"element", element}, {"value", value}});
    awaitText(heard);
  }

  const SessionFolder folder_;
  std::unique_ptr<SessionWire> wire_;
};
INSTANTIATE_TEST_SUITE_P(On, SessionControls, testing::ValuesIn(controls()), subjectName);

TEST_P(SessionControls, TakeValuesAndTellThem) {
  const struct {
    const char* identifier;
    json value;
    const char* shown;
  } cases[] = {{"colour", "Blue", "Blue"},
               {"size", "Large", "Large"},
               {"count", 7, "7"},
               {"volume", 42, "42"},
               {"line", "Ω 🐦", "Ω 🐦"}};
  for (const auto& [identifier, value, shown] : cases) {
    const long control = named(identifier);
    choose(control, value, std::string(identifier) + "=" + shown);
    EXPECT_EQ(described(control)["text"], shown) << identifier;
  }
  const long check = named("check");
  EXPECT_EQ(described(check)["checked"], false);
  choose(check, true, "check=on");
  EXPECT_EQ(described(check)["checked"], true);
  choose(find({{"kind", "UITabBar"}})["element"], "Two", "tabs=Two");
  EXPECT_EQ(find({{"kind", "UIButton"}, {"text", "Two"}})["selected"], true);
  EXPECT_EQ(find({{"kind", "UIButton"}, {"text", "One"}})["selected"], false);
  EXPECT_EQ(find({{"identifier", "toggle"}})["checked"], false);
  EXPECT_EQ(find({{"text", "Ride"}})["checked"], false);
  json colour = {{"element", named("colour")}, {"value", "Pink"}, {"choice", 1}};
  const json tooLoud = {{"element", named("volume")}, {"value", 1000}};
  json refused;
  for (const json& one : {tooLoud, colour}) {
    wire_->send("element.setValue", one, 1);
    refused = wire_->answer()["error"];
    EXPECT_EQ(refused["data"]["error"], "invalid argument") << one;
  }
  EXPECT_THAT(refused["message"].get<std::string>(), HasSubstr("Violet"));
  // A place stands in for a text that is not there, and for no other.
  colour["orInPlace"] = true;
  EXPECT_EQ(ask("element.setValue", colour)["taken"], "Green");
  awaitText("colour=Green");
  colour["value"] = "Violet";
  EXPECT_FALSE(ask("element.setValue", colour).contains("taken"));
  awaitText("colour=Violet");
}

TEST_P(SessionControls, AreClickedWhereAskedAndToldHowToFindThemAgain) {
  const json count = described(named("count"));
  ask("element.click", {{"element", count["element"]},
                        {"x", count["rect"]["width"].get<double>() * 0.97},
                        {"y", count["rect"]["height"].get<double>() * 0.3}});
  awaitText("count=1");
  const json best = ask("element.locators", {{"element", count["element"]}})["locators"][0];
  EXPECT_EQ(best["matches"], 1);
  EXPECT_EQ(find(best["find"])["element"], count["element"]) << best;
  ask("element.focus", {{"element", named("line")}});
  EXPECT_EQ(find({{"focused", true}, {"kind", "UITextField"}})["element"], named("line"));
  const long disabled = find({{"kind", "UITextField"}, {"text", "off"}})["element"];
  wire_->send("input.text", {{"element", disabled}, {"text", "lost"}}, 1);
  EXPECT_EQ(wire_->answer()["error"]["data"]["error"], "element not interactable");
}

TEST_P(SessionControls, StandOnceInTheTreeWhileAMenuIsOpen) {
  ask("element.click", {{"element", find({{"text", "File"}})["element"]}});
  awaitOf({{"find", {{"text", "New"}}}}, "visible");
  std::map<long, int> times;
  const json elements = ask("tree.get", json::object())["elements"];
  for (const json& one : elements) ++times[one["element"]];
  for (const auto& [element, count] : times) EXPECT_EQ(count, 1) << described(element);
  if (isQuick()) return;  // whose menus stand in the window of their bar
  const json bar = {{"xpath", "\\UINavigationBar[0]"}};
  EXPECT_EQ(ask("element.find", bar)["elements"].size(), 1U);
}

// Out of an editor, which loses it.
TEST_P(SessionControls, TextIsDraggedByMouseAndFinger) {
  if (isQuick()) return;  // its editors drag nothing
  const json from = {{"element", named("notes")}, {"x", 20}, {"y", 14}, {"finger", 1}};
  const json to = {{"element", named("line")}, {"finger", 1}};
  const auto select = [&] {
    ask("element.setText", {{"element", from["element"]}, {"text", "Moved"}});
    ask("input.keys", {{"steps", {"Control+a"}}});
  };
  const auto awaitMoved = [&] {
    awaitOf({{"element", to["element"]}, {"textIs", "Moved"}}, "there");
    awaitOf({{"element", from["element"]}, {"textIs", ""}}, "there");
  };
  select();
  ask("input.drag", {{"from", from}, {"to", to}});
  awaitMoved();
  ask("element.setText", {{"element", to["element"]}, {"text", ""}});
  select();
  const json above = {{"element", from["element"]}, {"x", 20}, {"y", -30}, {"finger", 1}};
  ask("input.touch",
      {{"steps",
        {{{"down", from}}, {{"move", above}}, {{"move", to}}, {{"move", to}}, {{"up", to}}}}});
  awaitMoved();
  ask("element.click", {{"element", named("check")}});
  awaitText("check=on");
}

TEST_P(SessionControls, ListsTablesAndTreesTellAndShowTheirItems) {
  const long list = named("list");
  EXPECT_EQ(described(list)["rows"], 30);
  ask("element.scrollToText", {{"element", list}, {"text", "Row 30"}});
  const json cell = find({{"kind", "UITableViewCell"}, {"text", "Row 30"}, {"visible", true}});
  EXPECT_EQ(cell["row"], 29) << cell;
  EXPECT_EQ(find({{"group", "list"}, {"text", "Row 30"}})["element"], cell["element"]);
  EXPECT_EQ(cell["selected"], false);
  ask("element.click", {{"element", cell["element"]}});
  awaitText("list=Row 30");
  EXPECT_EQ(described(cell["element"])["selected"], true);
  wire_->send("element.scrollToText", {{"element", list}, {"text", "Row 31"}}, 1);
  EXPECT_EQ(wire_->answer()["error"]["data"]["error"], "no such element");
  const json table = described(named("table"));
  EXPECT_EQ(table["rows"], isQuick() ? 3 : 4);
  EXPECT_EQ(table["columns"], 3);
  if (GetParam().name.starts_with("Quick5")) return;  // has no trees
  const json branch = find({{"kind", "UITableViewCell"}, {"text", "Herbs"}});
  EXPECT_EQ(branch["expanded"], false) << branch;
  ask("element.setExpanded", {{"element", branch["element"]}, {"expanded", true}});
  awaitOf({{"find", {{"kind", "UITableViewCell"}, {"text", "Thyme"}}}}, "visible");
  // Which of the views stand for the rows below is theirs to choose.
  const json herbs = find({{"kind", "UITableViewCell"}, {"text", "Herbs"}});
  EXPECT_EQ(herbs["expanded"], true);
  if (isQuick()) return;
  ask("element.setExpanded", {{"element", herbs["element"]}, {"expanded", false}});
  ask("element.scrollToText", {{"element", named("tree")}, {"text", "Thyme"}});
  EXPECT_EQ(find({{"kind", "UITableViewCell"}, {"text", "Herbs"}})["expanded"], true)
      << "what stands in a closed node is shown by opening it";
}

// The N-th element of a class, the text that `tarni type` sends to it over 9898 and what it holds
// then: that text, of which the program has heard, or another, and why.
struct Typed {
  const char* control;
  const char* tag;
  std::size_t nth;
  const char* text;
  const char* holds;
  const char* whyNot = "";
  const char* heard = "";
};
constexpr char kNoText[] =
    "it takes no text by this command, only a UITextField does (as the one inside a spin box)";
constexpr char kRefused[] = "it is read-only or allows no such text";
constexpr char kDisabled[] = "it is disabled";

const std::vector<Typed> kTypedIntoWidgets = {
    {"line edit", "UITextField", 1, "Ada Ω", "Ada Ω", "", "line=Ada Ω"},
    {"field of a combo box", "UITextField", 3, "Huge", "Huge", "", "size=Huge"},
    {"field of a spin box", "UITextField", 4, "42", "42", "", "count=42"},
    {"field of a date", "UITextField", 5, "2025-01-02", "2025-01-02", "", "day=2025-01-02"},
    {"field of a date, no date", "UITextField", 6, "today", "2024-05-17", kRefused},
    {"read-only field", "UITextField", 7, "mine", "as it is", kRefused},
    {"disabled field", "UITextField", 8, "on", "off", kDisabled},
    {"plain editor", "UITextView", 1, "Dear Ada", "", kNoText},
    {"rich editor", "UITextView", 2, "Dear Ada", "", kNoText},
    {"spin box", "UIControl", 1, "7", "42", kNoText},
    {"slider", "UISlider", 1, "7", "0", kNoText}};
const std::vector<Typed> kTypedIntoItems = {
    {"text field", "UITextField", 1, "Ada Ω", "Ada Ω", "", "line=Ada Ω"},
    {"field of a combo box", "UITextField", 3, "Huge", "Huge", "", "size=Huge"},
    {"field of a spin box", "UITextField", 4, "42", "42"},
    {"the same, no number", "UITextField", 4, "many", "42", kRefused},
    {"read-only field", "UITextField", 5, "mine", "as it is", kRefused},
    {"disabled field", "UITextField", 6, "on", "off", kDisabled},
    {"text area", "UITextView", 1, "Dear Ada", "", kNoText},
    {"slider", "UISlider", 1, "7", "0", kNoText}};

TEST_P(SessionControls, TakeTextByTheFixedPortOrItIsSaidWhyNot) {
  const auto& rows = isQuick() ? kTypedIntoItems : kTypedIntoWidgets;
  const std::filesystem::path script = folder_.socket() + ".script";
  std::ofstream commands(script);
  // A cell while it is edited, which it is until something else gets the focus.
  ask("element.click", {{"element", find({{"text", "b2"}})["element"]}});
  if (!isQuick()) ask("input.keys", {{"steps", {"F2"}}});
  commands << "type --tag UITextField --nth " << (isQuick() ? 11 : 9) << " \"b2 and more\"\n";
  for (const auto& row : rows) {
    commands << "type --tag " << row.tag << " --nth " << row.nth << " \"" << row.text << "\"\n";
  }
  commands.close();
  Program tool({built("bin/tarni"), "--port", "9898", "do", "--keep-going", script});
  EXPECT_EQ(tool.wait(kPatience), 1);
  const std::string said = tool.output();
  EXPECT_THAT(program_->output(), HasSubstr("B2=b2 and more"));
  const Playback playback(false);
  std::ptrdiff_t refusals = 0;
  for (const auto& [control, tag, nth, text, holds, whyNot, heard] : rows) {
    SCOPED_TRACE(control);
    EXPECT_EQ(playback.output("gettext", playback.find(tag).at(nth - 1)).value(), holds);
    EXPECT_THAT(program_->output(), HasSubstr(heard));
    if (*whyNot == '\0') continue;
    ++refusals;
    EXPECT_THAT(said, HasSubstr(tag + std::string(": ") + whyNot + "; it still holds \"" + holds));
  }
  EXPECT_EQ(std::ranges::count(said, ';'), refusals) << said;
}

TEST_P(SessionControls, WindowsAreSizedDrawnAndClosed) {
  const long window = ask("window.list", json::object())["windows"][0]["element"];
  const json size = ask("window.resize", {{"window", window}, {"width", 1100}, {"height", 700}});
  EXPECT_EQ(size["width"], 1100);
  const json picture = ask("window.picture", {{"window", window}, {"blurSecrets", true}});
  EXPECT_EQ(picture["format"], "png");
  EXPECT_EQ(picture["width"], 1100);
  EXPECT_THAT(picture["data"].get<std::string>(), testing::StartsWith("iVBOR"));
  EXPECT_EQ(ask("element.picture", {{"element", named("count")}})["format"], "png");
  ask("element.click",
      {{"element", find({{"kind", "UIButton"}, {"textContains", "window…"}})["element"]}});
  awaitOf({{"window", "Second Window"}}, "there");
  const long again = named("again");
  ask("window.activate", {{"window", again}});
  ask("element.click", {{"element", again}});
  awaitText("again=1");
  ask("wait.rest", {{"quiet", 50}});
  ask("window.close", {{"window", again}});
  awaitOf({{"window", "Second Window"}}, "gone");
}

}  // namespace
}  // namespace tarni::test
