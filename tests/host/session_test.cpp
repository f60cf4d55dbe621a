// Sessions as a person meets them: what `tarni record` keeps, and what `tarni play` makes of it.
#include <gmock/gmock.h>
#include <signal.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "host/session/Session.h"
#include "host/stream/StreamSession.h"
#include "host/wire/Ports.h"
#include "tests/host/ScriptedAgent.h"
#include "tests/host/ScriptedScreen.h"
#include "tests/host/Tarni.h"
#include "tests/support/Files.h"
#include "tests/support/Program.h"

namespace tarni::test {
namespace {

using namespace std::chrono_literals;
using host::kPlaybackPort;
using host::kRecorderPort;
using host::Session;
using host::Step;
using nlohmann::ordered_json;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Peer = ScriptedAgent::Peer;

constexpr auto kAll = std::filesystem::perms{0666};
constexpr auto kOwn = std::filesystem::perms{0600};
constexpr uid_t kNobody = 65534;

ordered_json step(const std::string& action, const std::string& className, const std::string& xpath,
                  const std::string& text, int index, const std::string& data = "") {
  return {{"action", action},
          {"popupName", ""},
          {"arguments",
           {{{"ObjectImage", "/9j/4AAQ"},
             {"className", className},
             {"sahiText", text},
             {"index", std::to_string(index)},
             {"xpath:position", xpath},
             {"parent", {{"classname", "UIView"}}}},
            {{"type", "string"}, {"data", data}}}}};
}

class Sessions : public testing::Test {
 protected:
  // Plays the steps on the screen, as on a program that runs already.
  Result play(ScriptedScreen& screen, const std::vector<ordered_json>& steps,
              const std::vector<std::string>& options = {}) const {
    host::StreamSessionWriter writer(file_, {program_});
    for (const auto& one : steps) writer.add(0.5, one);
    const ScriptedAgent agent(
        kPlaybackPort, answering([&screen](const auto& line) { return screen.answer(line); }));
    std::vector<std::string> arguments = {"play", file_.string(), "--attach-running"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return tarni(arguments);
  }

  const Folder folder_;
  const std::filesystem::path file_ = folder_.path / "session.json";
  std::string program_ = "wire_session";  // this test, which serves the port
};

TEST_F(Sessions, AreWholeAfterEveryStepAndCutOnesAreRefused) {
  {
    host::StreamSessionWriter writer(file_, {"/usr/bin/app", "--an argument"});
    EXPECT_THAT(host::readStreamSession(file_).steps, IsEmpty());
    for (int i = 0; i < 3; ++i) {
      writer.add(1.25 * i, step("Click", "UILabel", "\\UIView[0]", "Ünï \"q\"", i));
      EXPECT_EQ(host::readStreamSession(file_).steps.size(), writer.steps());
    }
  }
  const auto session = host::readStreamSession(file_);
  EXPECT_THAT(session.program, ElementsAre("/usr/bin/app", "--an argument"));
  EXPECT_EQ(session.steps[2].seconds, 2.5);
  EXPECT_EQ(session.steps[2].line, 4U);
  EXPECT_EQ(session.steps[2].text, "Ünï \"q\"");

  const auto whole = contents(file_);
  const auto shortest = std::string("\n]}").size();
  for (std::size_t length = 0; length + shortest < whole.size(); ++length) {
    std::ofstream(file_) << whole.substr(0, length);
    EXPECT_THROW(host::readStreamSession(file_), std::invalid_argument) << "cut to " << length;
  }
}

Step click(long order, const std::string& text) {
  return Step({{"order", order},
               {"act", "click"},
               {"element", {{"class", "UIButton"}, {"text", text}}},
               {"notYetKnown", {1, 2}}});
}

std::vector<std::string> wordsOf(const Session& session) {
  std::vector<std::string> words;
  for (const auto& step : session.steps()) words.push_back(step.inWords());
  return words;
}

TEST_F(Sessions, AreEditedInMemoryAndStayAsTheyWere) {
  Session session;
  session.program = {"app"};
  session.take(click(1, "One"));
  session.take(click(2, "Two"));
  session.insert(1, Step::check({{"class", "UILabel"}}, "Hello"));
  EXPECT_EQ(session.take(click(2, "Twice")), 2U);
  EXPECT_THAT(wordsOf(session),
              ElementsAre("click UIButton \"One\"", "check UILabel shows \"Hello\"",
                          "click UIButton \"Twice\""));
  // What grows into an earlier step is told no second time.
  session.take(click(3, "Three"));
  EXPECT_EQ(session.take(click(1, "Chosen")), 0U);
  session.take(Step({{"order", 2}, {"act", "type"}, {"secret", "Password"}}));
  session.take(Step({{"order", 3}, {"act", "type"}, {"text", "Ada"}, {"value", "Ada"}}));
  Step typed = session.steps()[3];
  typed.setText("Eve");
  session.replace(3, typed);
  session.remove(1);
  EXPECT_THROW(session.remove(3), std::out_of_range);
  EXPECT_THAT(wordsOf(session),
              ElementsAre("click UIButton \"Chosen\"", "type  = secret Password", "type  = Eve"));
  session.save(file_);
  EXPECT_EQ(std::filesystem::status(file_).permissions(), kOwn);
  EXPECT_EQ(Session::fromLines(host::readSessionLines(file_)).steps(), session.steps());
}

TEST_F(Sessions, AreWholeWhileAStepGrowsAndShrinks) {
  const host::Json header = {{"tarniSession", 2}};
  host::SessionLinesWriter writer(file_, header);
  writer.put(0, click(1, "One").json());
  writer.put(1, click(2, std::string(500, 'x')).json());
  writer.put(1, click(2, "Two").json());
  EXPECT_EQ(Session::fromLines(host::readSessionLines(file_)).steps()[1], click(2, "Two"));
  writer.put(0, click(1, "Both").json());
  writer.put(1, click(2, "More").json());
  EXPECT_THAT(wordsOf(Session::fromLines(host::readSessionLines(file_))),
              ElementsAre("click UIButton \"Both\"", "click UIButton \"More\""));
  EXPECT_THROW(writer.put(3, header), std::out_of_range);
}

TEST_F(Sessions, ThatAreBadAreNamedByLineBeforeAnythingIsStarted) {
  const std::string header = R"({"tarniSession":1,"program":["app"],"steps":[)";
  const std::string newHeader = R"({"tarniSession":2,"program":["app"],"steps":[)";
  const auto entry = [](const ordered_json& one) {
    return ordered_json{{"time", 1}, {"step", one}}.dump();
  };
  const auto good = entry(step("Click", "UILabel", "\\UIView[0]", "Hi", 0));
  struct Case {
    std::string text;
    const char* complaint;
  };
  const std::vector<Case> cases = {
      {"", ":0: the file is empty"},
      {"GIF89a", ":1: this is no session file"},
      {R"({"tarniSession":3,"steps":[)", ":1: the file is of another version, 3; this tool reads"},
      {header + "\n" + good + ",\n" + good.substr(0, 40), ":3: the file is cut short here"},
      {header + "\n" + good + ",\n", ":2: the file is cut short here"},
      {header + "\n" + good + ",\n{\"time\": oops}\n]}\n", ":3: this is no JSON"},
      {header + "\n" + good + "\n" + good + "\n]}\n", ":3: the comma behind the step before"},
      {header + "\n" + entry(step("Juggle", "UILabel", "", "", 0)) + "\n]}\n",
       ":2: the action \"Juggle\" is not known"},
      {header + "\n" + good + ",\n" + entry(step("Click", "", "", "", 0)) + "\n]}\n",
       ":3: the step has no \"className\""},
      {header + "\n" + entry("text of a page") + "\n]}\n", ":2: this came from a web page"},
      {header + "\n" + entry({{"action", "Click"}, {"arguments", {7}}}) + "\n]}\n",
       ":2: the step names no element"},
      {newHeader + "\n{\"act\":\"juggle\"}\n]}\n", ":2: the act \"juggle\" is not known"},
      {newHeader + "\n{\"act\":\"click\"}\n]}\n", ":2: the step has no \"element\""},
      {newHeader + "\n{\"act\":\"type\",\"text\":7}\n]}\n", ":2: \"text\" is no text"},
      {newHeader + "\n" + R"({"act":"click","element":{"locators":[{"find":{"colour":"red"}}]}})" +
           "\n]}\n",
       ":2: no locator has \"colour\""},
      {newHeader + "\n" + R"({"act":"click","element":{"locators":[{"find":{"tet":"OK"}}]}})" +
           "\n]}\n",
       ":2: no locator has \"tet\"; did you mean \"text\"?"},
      {newHeader + "\n" + R"({"act":"click","element":{"locators":[{"fnd":{"text":"OK"}}]}})" +
           "\n]}\n",
       ":2: a locator has no \"find\""},
      {newHeader + "\n" + R"({"act":"check","element":{},"textis":"OK"})" + "\n]}\n",
       ":2: \"textis\" is not known; did you mean \"textIs\"?"},
      {newHeader + "\n" + R"({"act":"check","element":{},"about":"OK"})" + "\n]}\n",
       ":2: the step has neither \"is\""},
      {newHeader + "\n" + R"({"act":"check","element":{},"is":"checkd"})" + "\n]}\n",
       ":2: \"is\" cannot be \"checkd\"; did you mean \"checked\"?"},
      {newHeader + "\n" + R"({"act":"click","element":{"locatrs":[]},"button":"right"})" + "\n]}\n",
       ":2: \"locatrs\" is not known; did you mean \"locators\"?"},
      {newHeader + "\n" + R"({"act":"click","element":{},"button":"rihgt"})" + "\n]}\n",
       ":2: \"button\" cannot be \"rihgt\"; did you mean \"right\"?"},
      {header + "\n{\"step\":" + std::string(200'000, '['), ":2: JSON nested deeper than 64"},
      {header + "\n" + good + "\n]}\nmore\n", ":4: there is more behind"},
  };
  for (const auto& one : cases) {
    std::ofstream(file_) << one.text;
    const auto result = tarni({"play", file_.string()});
    EXPECT_EQ(result.code, 2) << one.text;
    EXPECT_THAT(result.output, HasSubstr("session.json" + std::string(one.complaint)));
  }
  EXPECT_EQ(tarni({"play", (folder_.path / "none").string()}).code, 5);
}

TEST_F(Sessions, StayWhenTheNextRecordingCannotBegin) {
  { host::StreamSessionWriter(file_, {program_}).add(1, step("Click", "UIView", "", "kept", 0)); }
  EXPECT_NE(tarni({"--connect-timeout", "0", "record", "-o", file_.string()}).code, 0);
  EXPECT_EQ(host::readStreamSession(file_).steps.size(), 1U);
  const auto other = folder_.path / "other.json";
  EXPECT_NE(tarni({"--connect-timeout", "0", "record", "-o", other.string()}).code, 0);
  EXPECT_FALSE(std::filesystem::exists(other));
}

TEST_F(Sessions, AreReadByTheirUserAloneAndWrittenOverNobodyElsesLink) {
  const auto secret = folder_.path / "secret.json";
  const auto link = folder_.path / "link.json";
  std::ofstream(file_) << "old";
  std::filesystem::permissions(file_, kAll);
  std::filesystem::create_symlink(secret, link);
  for (const auto& path : {file_, link}) {
    host::StreamSessionWriter(path, {program_}).add(1, step("Click", "UIView", "", "kept", 0));
    EXPECT_EQ(std::filesystem::status(path).permissions(), kOwn);
    EXPECT_EQ(host::readStreamSession(path).steps.size(), 1U);
  }
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  if (lchown(link.c_str(), kNobody, kNobody) != 0) GTEST_SKIP() << "takes root";
  const auto result = tarni({"record", "-o", link.string()});
  EXPECT_EQ(result.code, 5);
  EXPECT_THAT(result.output, HasSubstr("it is a link that user 65534 laid"));
  EXPECT_EQ(host::readStreamSession(secret).steps.size(), 1U);
}

TEST_F(Sessions, ThatOthersMayWriteStartTheirProgramOnlyWhenTrusted) {
  const auto proof = folder_.path / "started";
  { const host::StreamSessionWriter writer(file_, {"touch", proof.string()}); }
  const Program::Environment environment = {{"TARNI_LIBRARY", "/lib/x86_64-linux-gnu/libm.so.6"}};
  std::filesystem::permissions(file_, kAll);
  const auto refused = tarni({"play", file_.string()}, environment);
  EXPECT_EQ(refused.code, 2);
  EXPECT_THAT(refused.output, AllOf(HasSubstr("others may write to it: give --trust to start"),
                                    HasSubstr("touch " + proof.string())));
  EXPECT_FALSE(std::filesystem::exists(proof));
  if (lchown(file_.c_str(), kNobody, kNobody) == 0) {
    EXPECT_THAT(tarni({"play", file_.string()}, environment).output,
                HasSubstr("it belongs to user 65534"));
  }
  tarni({"play", "--trust", file_.string()}, environment);
  EXPECT_TRUE(std::filesystem::exists(proof));
}

TEST_F(Sessions, KeepEveryStepOnceAndNotWhatWasRecordedBefore) {
  const auto message = [](const std::string& text) {
    return ordered_json{step("ClickButton", "UIButton", "\\UIView[0]", text, 0)}.dump();
  };
  for (const bool hasEarlier : {true, false}) {
    const ScriptedAgent recorder(kRecorderPort, [&](Peer& peer) {
      peer.sendFramed(hasEarlier ? message("before")
                                 : "Welcome! RecorderServer StartedSuccessfully ");
      for (const auto* text : {"one", "one", "two"}) peer.sendFramed(message(text));
      peer.sendFramed("steps of a web page");
      peer.readLine();
    });
    Program recording({built("bin/tarni"), "record", "-o", file_.string()});
    EXPECT_TRUE(eventually([this] { return contents(file_).ends_with("web page\"}\n]}\n"); }));
    recording.signal(SIGKILL);
    recording.wait(5s);
    const auto kept = ordered_json::parse(contents(file_));
    ASSERT_EQ(kept["steps"].size(), 4U);
    EXPECT_EQ(kept["steps"][0]["step"], ordered_json::parse(message("one"))[0]);
    EXPECT_EQ(kept["steps"][1]["step"], ordered_json::parse(message("one"))[0]);
    EXPECT_EQ(kept["steps"][2]["step"], ordered_json::parse(message("two"))[0]);
    EXPECT_EQ(kept["steps"][3]["step"], "steps of a web page");
    EXPECT_THAT(kept["program"][0].get<std::string>(), HasSubstr("wire_session"));
    std::filesystem::remove(file_);
  }
}

TEST_F(Sessions, FindElementsByPositionOrTextAndSayWhich) {
  ScriptedScreen screen({{"UIButton", "\\V[0]\\UIButton[0]", "OK"},
                         {"UIButton", "\\V[0]\\UIButton[1]", "Cancel"},
                         {"UIButton", "\\V[0]\\UIButton[2]", "Cancel"},
                         {"UIButton", "\\V[0]\\UIButton[3]", "Apply", "Apply", false},
                         {.className = "UITextField",
                          .xpath = "\\V[0]\\UITextField[0]",
                          .text = "typed",
                          .recordedText = "Name",
                          .editable = true},
                         {"UIButton", "\\V[0]\\UIButton[4]", "Close", ""},
                         {"UISlider", "\\V[0]\\UISlider[0]", "10"}});
  auto icon = step("ClickButton", "UIButton", "\\gone", "", 1);
  icon["arguments"][0]["label"] = "Close";
  const auto result = play(screen, {step("ClickButton", "UIButton", "\\V[0]\\UIButton[0]", "OK", 0),
                                    // Another button stands at the position now.
                                    step("ClickButton", "UIButton", "\\V[0]\\UIButton[1]", "OK", 1),
                                    // Two have the text: the place in the tree tells.
                                    step("ClickButton", "UIButton", "\\UIButton[2]", "Cancel", 1),
                                    // What recording reads of a text field is not what it shows.
                                    step("Click", "UITextField", "\\gone", "Name", 3), icon,
                                    // As the tap has left it.
                                    step("Click", "UISlider", "\\V[0]\\UISlider[0]", "20", 0)});
  EXPECT_EQ(result.code, 0) << result.output;
  EXPECT_THAT(screen.deeds(), ElementsAre("clickelement 0", "clickelement 0", "clickelement 2",
                                          "clickelement 4", "clickelement 5", "clickelement 6"));
  EXPECT_THAT(result.output, testing::ContainsRegex(
                                 "1  click UIButton \"OK\" .ClickButton.: passed, by position"));
  EXPECT_THAT(result.output, testing::ContainsRegex("2  .*: passed, by class and text"));
  EXPECT_THAT(result.output, testing::ContainsRegex("3  .*: passed, by position"));
  EXPECT_THAT(result.output, testing::ContainsRegex("4  .*: passed, by class and text"));
  EXPECT_THAT(result.output, testing::ContainsRegex("5  .*: passed, by class and text"));
  EXPECT_THAT(result.output, HasSubstr("6 of 6 steps passed"));
  EXPECT_THAT(result.output, Not(HasSubstr("note:")));
}

TEST_F(Sessions, DoNotPassOnAnElementOfTheSameIndex) {
  struct Case {
    ordered_json step;
    const char* complaint;
  };
  const auto row = [](const char* text) {
    return step("Click", "UITableViewCell", "\\UITableViewCell[2]", text, 1);
  };
  const std::vector<Case> cases = {
      {row("Row 15"),
       "it is not on screen; in its place stands \"Row 5\"; a UITableViewCell stands at index 1 "
       "and shows \"Row 4\": --guess takes it"},
      {row("Row 3"), "it is there, but not on screen"},
      {row("Row 9"), "2 fit and none stands at the recorded position: index 3 (80x20 at 1,2), "},
      {row(""), "it is not on screen"},
      {step("Click", "UIView", "\\gone", "", 0),
       "it is not on screen; a UIView without a text stands at index 0: --guess takes it"}};
  ScriptedScreen screen({{"UITableViewCell", "\\A[0]", "Row 3", "Row 3", false},
                         {"UITableViewCell", "\\A[1]", "Row 4"},
                         {"UITableViewCell", "\\A[2]", "Row 5"},
                         {"UITableViewCell", "\\A[3]", "Row 9"},
                         {"UITableViewCell", "\\A[4]", "Row 9"},
                         {"UIView", "\\A[5]", ""}});
  for (const auto& one : cases) {
    const auto result = play(screen, {one.step}, {"--timeout", "0"});
    EXPECT_EQ(result.code, 1) << one.complaint;
    EXPECT_THAT(result.output, HasSubstr(one.complaint));
  }
  EXPECT_THAT(screen.deeds(), IsEmpty());
  const auto guessed = play(screen, {row("Row 15")}, {"--timeout", "0", "--guess"});
  EXPECT_EQ(guessed.code, 0) << guessed.output;
  EXPECT_THAT(guessed.output, HasSubstr("passed, by class and index"));
  EXPECT_THAT(screen.deeds(), ElementsAre("clickelement 1"));
}

TEST_F(Sessions, WaitUntilTheElementIsThereAndTappable) {
  ScriptedScreen screen({{"UIButton", "\\UIButton[0]", "OK", "OK", false, false, false}});
  screen.onLook = [](auto& elements, int looks) {
    if (looks == 2) elements[0].visible = true;
    if (looks == 4) elements[0].enabled = true;
    if (looks == 6) elements[0].tappable = true;
  };
  int looks = 0;
  screen.onLook = [&looks, before = screen.onLook](auto& elements, int count) {
    before(elements, count);
    looks = count;
  };
  const auto result = play(screen, {step("ClickButton", "UIButton", "\\UIButton[0]", "OK", 0)});
  EXPECT_EQ(result.code, 0) << result.output;
  EXPECT_EQ(looks, 6);
  EXPECT_THAT(screen.deeds(), ElementsAre("clickelement 0"));
}

TEST_F(Sessions, ActOnAnElementThatMovesWhileItIsLookedFor) {
  ScriptedScreen screen({{"UIButton", "\\UIButton[0]", "OK"}});
  screen.onLook = [](auto& elements, int looks) {
    if (looks == 0) elements[0].xpath = "\\UIView[0]\\UIButton[0]";
  };
  const auto result = play(screen, {step("ClickButton", "UIButton", "\\UIButton[0]", "OK", 0)});
  EXPECT_EQ(result.code, 0) << result.output;
  EXPECT_THAT(screen.deeds(), ElementsAre("clickelement 0"));
}

TEST_F(Sessions, TellWhatWasLookedForAndWhatWasThere) {
  ScriptedScreen screen({{"UIButton", "\\UIButton[0]", "Yes"},
                         {"UIButton", "\\UIButton[1]", "Later", "Later", true, false}});
  const auto missing = play(screen,
                            {step("ClickButton", "UIButton", "\\UIButton[7]", "No", 7),
                             step("ClickButton", "UIButton", "\\UIButton[0]", "Yes", 0)},
                            {"--timeout", "0.3"});
  EXPECT_EQ(missing.code, 1);
  EXPECT_THAT(missing.output,
              AllOf(HasSubstr("session.json:2: step 1 (ClickButton): not found within 0.3 s"),
                    HasSubstr("looked for: UIButton \"No\" at \\UIButton[7]"),
                    HasSubstr("was there: UIButton \"Yes\", \"Later\" (disabled)"),
                    HasSubstr("0 of 2 steps passed")));
  const auto disabled = play(screen, {step("ClickButton", "UIButton", "\\UIButton[1]", "Later", 1)},
                             {"--timeout", "0.3"});
  EXPECT_EQ(disabled.code, 1);
  EXPECT_THAT(disabled.output, HasSubstr("it is \"Later\" (disabled)"));
  EXPECT_THAT(screen.deeds(), IsEmpty());
}

TEST_F(Sessions, TapThroughWhatIsNoControlOnly) {
  ScriptedScreen screen({{"UILabel", "\\A[0]", "Name", "Name", true, true, false},
                         {"UITableViewCell", "\\A[1]", "Row", "Row", true, false, false}});
  const auto label = step("Click", "UILabel", "\\A[0]", "Name", 0);
  const auto row = step("Click", "UITableViewCell", "\\A[1]", "Row", 0);
  EXPECT_EQ(play(screen, {label}, {"--timeout", "0"}).code, 0);
  EXPECT_EQ(play(screen, {row}, {"--timeout", "0"}).code, 1);
  EXPECT_THAT(screen.deeds(), ElementsAre("clickelement 0"));
}

TEST_F(Sessions, SetSwitchesToTheRecordedState) {
  const std::vector<ScriptedElement> one = {{.className = "UISwitch",
                                             .xpath = "\\UISwitch[0]",
                                             .text = "0",
                                             .recordedText = "0",
                                             .state = "false"}};
  const auto on = step("Mobile_SelectSwitch", "UISwitch", "\\UISwitch[0]", "1", 0);
  const auto off = step("Mobile_DeSelectSwitch", "UISwitch", "\\UISwitch[0]", "0", 0);
  ScriptedScreen screen(one);
  const auto result = play(screen, {off, on, on, off});
  EXPECT_EQ(result.code, 0) << result.output;
  EXPECT_THAT(screen.deeds(), ElementsAre("clickelement 0", "clickelement 0"));
  EXPECT_THAT(result.output, AllOf(HasSubstr("was off already"), HasSubstr("was on already")));
  ScriptedScreen stubborn(one);
  stubborn.obeys = false;
  const auto failed = play(stubborn, {on});
  EXPECT_EQ(failed.code, 1);
  EXPECT_THAT(failed.output, HasSubstr("it was tapped and is still off"));
}

TEST_F(Sessions, CheckWhatTheFieldHoldsAfterTyping) {
  const std::vector<ScriptedElement> one = {{.className = "UITextField",
                                             .xpath = "\\UITextField[0]",
                                             .text = "",
                                             .recordedText = "Name",
                                             .editable = true}};
  const auto type =
      step("TypeTextOnEditBox", "UITextField", "\\UITextField[0]", "Name", 0, "two words");
  ScriptedScreen screen(one);
  EXPECT_EQ(play(screen, {type}).code, 0);
  EXPECT_THAT(screen.deeds(), ElementsAre("sendkeysonelement 0 two words"));
  ScriptedScreen stubborn(one);
  stubborn.obeys = false;
  const auto failed = play(stubborn, {type});
  EXPECT_EQ(failed.code, 1);
  EXPECT_THAT(failed.output,
              HasSubstr("it is read-only or allows no such text; it still holds \"\""));
}

TEST_F(Sessions, TypeIntoADialogOnlyOnceItIsOpened) {
  ScriptedScreen screen({{.className = "UIButton",
                          .xpath = "\\UIButton[0]",
                          .text = "Open",
                          .recordedText = "Open",
                          .state = "false"},
                         {.className = "UITextField",
                          .xpath = "\\UITextField[0]",
                          .text = "Untitled",
                          .recordedText = "",
                          .visible = false,
                          .editable = true}});
  screen.onLook = [](auto& elements, int) { elements[1].visible = elements[0].state == "true"; };
  // As it is recorded when the field has the focus before the tap is made a step.
  const auto result =
      play(screen, {step("TypeTextOnEditBox", "UITextField", "\\UITextField[0]", "", 0, "Untitled"),
                    step("ClickButton", "UIButton", "\\UIButton[0]", "Open", 0)});
  EXPECT_EQ(result.code, 0) << result.output;
  EXPECT_THAT(screen.deeds(), ElementsAre("clickelement 0", "sendkeysonelement 1 Untitled"));
}

TEST_F(Sessions, MayEndTheirProgramWithTheLastStepOnly) {
  const auto quit = step("ClickButton", "UIButton", "\\UIButton[0]", "Quit", 0);
  for (const int steps : {1, 2}) {
    host::StreamSessionWriter writer(file_, {program_});
    for (int i = 0; i < steps; ++i) writer.add(i, quit);
    ScriptedScreen screen({{"UIButton", "\\UIButton[0]", "Quit"}});
    const ScriptedAgent agent(kPlaybackPort, [&screen](Peer& peer) {
      for (auto line = peer.readLine(); !line.empty(); line = peer.readLine()) {
        if (line.find("clickelement") != std::string::npos) return;
        peer.sendFramed(screen.answer(line));
      }
    });
    const auto result = tarni({"play", file_.string(), "--attach-running"});
    EXPECT_EQ(result.code, steps == 1 ? 0 : 3) << result.output;
    EXPECT_THAT(result.output, HasSubstr(steps == 1 ? "(the program ended)" : "0 of 2"));
  }
}

TEST_F(Sessions, OfAnotherProgramAreWarnedOf) {
  program_ = "/usr/bin/other-program";
  ScriptedScreen screen({{"UIButton", "\\UIButton[0]", "OK"}});
  const auto result = play(screen, {step("ClickButton", "UIButton", "\\UIButton[0]", "OK", 0)});
  EXPECT_EQ(result.code, 0);
  EXPECT_THAT(result.output, HasSubstr("note: the session was recorded with other-program, not "
                                       "with wire_session"));
}

TEST_F(Sessions, AreReportedOnOnePageWithEverythingEscaped) {
  const std::string evil = "<script>alert('&\"')</script>";
  ScriptedScreen screen({{"UIButton", "\\UIButton[0]", evil}});
  const auto report = folder_.path / "deep" / "report";
  const auto result = play(screen,
                           {step("ClickButton", "UIButton", "\\UIButton[0]", evil, 0),
                            step("ClickButton", "UILabel", "\\" + evil, evil, 4),
                            step("ClickButton", "UIButton", "\\UIButton[0]", evil, 0)},
                           {"--timeout", "0.2", "--report", report.string()});
  EXPECT_EQ(result.code, 1);
  EXPECT_EQ(std::filesystem::status(report).permissions(),
            kOwn | std::filesystem::perms::owner_exec);
  EXPECT_EQ(std::filesystem::status(report / "index.html").permissions(), kOwn);
  const auto page = contents(report / "index.html");
  EXPECT_THAT(page, Not(HasSubstr("<script")));
  EXPECT_THAT(page, HasSubstr("&lt;script&gt;alert(&#39;&amp;\\&quot;&#39;)&lt;/script&gt;"));
  EXPECT_THAT(page, AllOf(HasSubstr("Failed"), HasSubstr("1 of 3"), HasSubstr("found by position"),
                          HasSubstr("not found within 0.2 s"), HasSubstr("no UILabel at all"),
                          HasSubstr("UIButton[0]  "), HasSubstr("not played")));
  // Before and after the first step, before the failed one; and the elements as recorded.
  const auto count = [&page](const std::string& text) {
    std::size_t seen = 0;
    for (auto at = page.find(text); at != std::string::npos; at = page.find(text, at + 1)) ++seen;
    return seen;
  };
  EXPECT_EQ(count("alt=\"The window, before\" src=\"data:image/jpeg;base64,"), 2U);
  EXPECT_EQ(count("alt=\"The window, after\" src=\"data:image/jpeg;base64,"), 1U);
  EXPECT_EQ(count("alt=\"The element as recorded\" src=\"data:image/jpeg;base64,"), 3U);
  EXPECT_THAT(page, Not(HasSubstr("src=\"http")));
}

TEST_F(Sessions, WhoseProgramDoesNotComeUpSayWhatItPrinted) {
  const host::StreamSessionWriter ofShell(file_, {"sh", "-c", "echo broken pipes; exit 3"});
  Program play({built("bin/tarni"), "play", file_.string()},
               {{"TARNI_LIBRARY", "/lib/x86_64-linux-gnu/libm.so.6"}});
  EXPECT_EQ(play.wait(20s), 5);
  EXPECT_THAT(play.output(),
              AllOf(HasSubstr("ended before the agent was ready"), HasSubstr("broken pipes")));
  const host::StreamSessionWriter ofNobody(file_, {});
  const auto unknown = tarni({"play", file_.string()});
  EXPECT_EQ(unknown.code, 2);
  EXPECT_THAT(unknown.output, HasSubstr("does not tell its program"));
}

}  // namespace
}  // namespace tarni::test
