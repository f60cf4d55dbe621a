// The command `tarni` as a person or a script meets it, against an agent that plays by a script.
#include <gmock/gmock.h>

#include <fstream>
#include <map>
#include <mutex>
#include <nlohmann/json.hpp>

#include "host/wire/Ports.h"
#include "tests/host/ScriptedAgent.h"
#include "tests/host/Tarni.h"
#include "tests/support/Files.h"
#include "tests/support/Program.h"

namespace tarni::test {
namespace {

using namespace std::chrono_literals;
using host::kPlaybackPort;
using host::kRecorderPort;
using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using Peer = ScriptedAgent::Peer;

std::string answerOf(const std::string& text) {
  return json{{{"output", text}}}.dump();
}

// A screen with two buttons, "OK" and "Cancel", and a switch that is off.
std::string screen(const std::string& line) {
  const auto command = json::parse(line, nullptr, false);
  if (!command.is_object()) return "[]";
  const auto at = [&command](const char* key) { return command.value(key, ""); };
  const auto name = at("functionname");
  const auto value = at("accessorvalue");
  if (name == "findelements" && at("accessortype").empty() && at("tagname") == "UIButton") {
    return R"([{"elementID":"ID-OK"},{"elementID":"ID-CANCEL"}])";
  }
  if (name == "findelements" && value == "OK") return R"([{"elementID":"ID-OK"}])";
  if (name == "findelements" && value == "\\UIView[0]\\UISwitch[0]") {
    return R"([{"elementID":"ID-SWITCH"}])";
  }
  if (name == "gettext" && value == "ID-OK") return answerOf("OK");
  if (name == "gettext" && value == "ID-SWITCH") return answerOf("");
  if (name == "isselected" && value == "ID-SWITCH")
    return R"([{"output":"false"},{"output":"false"}])";
  if (name == "isenabled" && value == "ID-OK") return answerOf("true");
  if (name == "getwidth" && value == "ID-OK") return R"([{"exceptionmsg":"no width"}])";
  return "[]";
}

class CommandLine : public testing::Test {
 protected:
  // What the client sent, the greeting of the first connection included in the play.
  void serve(int connections = 1) {
    agent_ = std::make_unique<ScriptedAgent>(
        kPlaybackPort,
        [this](Peer& peer) {
          peer.sendFramed("Welcome PlayBackServer Started Successfully (v25-Mar-2019)");
          answering([this](const std::string& line) {
            const std::lock_guard lock(mutex_);
            lines_.push_back(line);
            return screen(line);
          })(peer);
        },
        connections);
  }
  std::string lastLine() {
    const std::lock_guard lock(mutex_);
    return lines_.empty() ? "" : lines_.back();
  }

  std::mutex mutex_;
  std::vector<std::string> lines_;
  std::unique_ptr<ScriptedAgent> agent_;
};

TEST_F(CommandLine, EndsWithACodeForEveryOutcome) {
  struct Case {
    std::vector<std::string> arguments;
    int code;
    const char* output;
  };
  const std::vector<Case> cases = {
      {{"find", "UIButton"}, 0, "ID-OK\nID-CANCEL\n"},
      {{"--json", "find", "UIButton"}, 0, R"([{"elementID":"ID-OK"},{"elementID":"ID-CANCEL"}])"},
      {{"find", "--text", "No"}, 1, "no element with the text \"No\" is on screen"},
      {{"text", "--text", "OK"}, 0, "OK\n"},
      {{"type", "--text", "OK", "OK"}, 0, ""},
      {{"type", "--xpath", "/UIView[0]/UISwitch[0]", "No"}, 1, "no text field, or allows no such"},
      {{"enabled", "ID-OK"}, 0, "true\n"},
      {{"selected", "--xpath", "/UIView[0]/UISwitch[0]"}, 1, "false\n"},
      {{"selected", "ID-OK"}, 1, "no switch"},
      {{"click", "GONE"}, 1, "no element has the identifier GONE"},
      {{"click", "--tag", "UIButton"}, 1, "2 UIButton fit"},
      {{"click"}, 2, "which element?"},
      {{"click", "--xpath", "//UIButton[@a='b']"}, 1, "no element at //UIButton[@a='b'] is"},
      {{"find", "--text", "a", "--xpath", "b"}, 2, "tarni: --text excludes"},
      {{"swipe", "ID-OK", "sideways"}, 2, "where to?"},
      {{"frobnicate"}, 2, "\"frobnicate\" is no command"},
      {{"fnd"}, 2, "did you mean \"find\"?"},
      {{"find", "--txet", "OK"}, 2, "Did you mean --text?"},
      {{"--json", "--frobnicate"}, 2, "--frobnicate"},
      {{}, 2, "which command?"},
      {{"--in", "", "find", "UIButton"}, 2, "the name \"\" does not do"},
      {{"--in", "a/b", "find", "UIButton"}, 2, "the name \"a/b\" does not do"},
      {{"--in", "nosuch", "find", "UIButton"}, 3, "no program named \"nosuch\""},
      {{"attach", "4194305"}, 3, "there is no process 4194305"},
      {{"find", "--tag", "UIButton"}, 0, "ID-OK\nID-CANCEL\n"},
      {{"snapshot", "-o", "picture.PNG"}, 2, "pictures are JPEG: name the file .jpg"},
      {{"snapshot", "-o", "picture.gif"}, 2, "PNG or JPEG"},
      {{"run", "/no/such/program", "--version"}, 3, "/no/such/program"},
      {{"--host-timeout", "1", "run", "/no/such/program", "--version"}, 3, "/no/such/program"},
      {{"play", "--display", "/no/such/session", "--junit", "x"}, 5, "/no/such/session"},
      {{"do", "/no/such/file"}, 5, "cannot read /no/such/file"},
      {{"width", "--text", "OK"}, 4, "no width"},
      {{"send", "not json"}, 0, "[]\n"},
  };
  serve(static_cast<int>(cases.size()));
  for (const auto& one : cases) {
    const auto result = tarni(one.arguments);
    EXPECT_EQ(result.code, one.code) << one.output << ": " << result.output;
    EXPECT_THAT(result.output, HasSubstr(one.output));
  }
}

TEST_F(CommandLine, ActsOnTheOneElementThatFits) {
  serve(3);
  EXPECT_EQ(tarni({"click", "--text", "OK"}).code, 0);
  EXPECT_EQ(json::parse(lastLine())["accessorvalue"], "ID-OK");
  EXPECT_EQ(tarni({"click", "--tag", "UIButton", "--nth", "2"}).code, 0);
  EXPECT_EQ(json::parse(lastLine())["accessorvalue"], "ID-CANCEL");
  EXPECT_EQ(tarni({"swipe", "left"}).code, 0);
  EXPECT_EQ(json::parse(lastLine())["accessorvalue"], "") << "the window, without an element";
  EXPECT_EQ(json::parse(lastLine())["datavalue"], "left");
}

TEST_F(CommandLine, CarriesOutAScriptInOneConnection) {
  serve(1);
  const Folder folder;
  const auto script = folder.path / "script";
  std::ofstream(script) << "# a comment\n\nfind UIButton\n"
                        << "selected --xpath '\\UIView[0]\\UISwitch[0]'\n"
                        << "click --text OK\n";
  const auto stopping = tarni({"do", script.string()});
  EXPECT_EQ(stopping.code, 1);
  EXPECT_THAT(stopping.output, HasSubstr("ID-CANCEL\nfalse\n"));
  EXPECT_THAT(stopping.output, HasSubstr("line 4 failed"));
  EXPECT_EQ(json::parse(lastLine())["functionname"], "isselected");
  agent_.reset();
  serve(1);
  EXPECT_EQ(tarni({"do", "--keep-going", script.string()}).code, 1);
  EXPECT_EQ(json::parse(lastLine())["functionname"], "clickelement");
}

TEST_F(CommandLine, PutsTheViewTreeTogetherAndWritesPictures) {
  const auto view = [](const char* type, const char* children) {
    return json{
        {"elementType", type},
        {"childCount", children},
        {"text", ""},
        {"isVisibleInViewHierarchy", "true"},
        {"isVisibleInWindowFrame", "true"},
        {"imageBase64", "aGVsbG8="},
        {"rectangle", {{"x", "1.00"}, {"y", "2.00"}, {"width", "3.00"}, {"height", "4.00"}}}};
  };
  const auto views =
      json{view("A", "2"), view("B", "1"), view("C", "0"), view("B", "0"), view("A", "0")};
  agent_ = std::make_unique<ScriptedAgent>(
      kPlaybackPort, answering([answer = views.dump()](const auto&) { return answer; }), 3);
  EXPECT_EQ(tarni({"tree"}).output,
            "A[0]  3x4 at 1,2\n  B[0]  3x4 at 1,2\n    C[0]  3x4 at 1,2\n  B[1]  3x4 at 1,2\n"
            "A[1]  3x4 at 1,2\n");
  EXPECT_THAT(tarni({"tree", "--paths"}).output, HasSubstr("\n\\A[0]\\B[0]\\C[0]  "));
  const Folder folder;
  EXPECT_EQ(tarni({"describe", "--images", folder.path}).code, 0);
  std::ifstream picture(folder.path / "3-C.jpg");
  std::string bytes;
  picture >> bytes;
  EXPECT_EQ(bytes, "hello");
}

TEST_F(CommandLine, ShowsWhatWouldSteerTheTerminal) {
  const std::string evil = "\x1B[2J\x7F\u009B\u202E\nA\\[0]'$(id)";
  const std::string shown = R"(\u001b[2J\u007f\u009b\u202e\nA\[0]'$(id))";
  const auto element = json{{{"elementID", evil},
                             {"elementType", evil},
                             {"text", evil},
                             {"childCount", "0"},
                             {"imageBase64", "aGVsbG8="}}};
  agent_ = std::make_unique<ScriptedAgent>(
      kPlaybackPort, answering([&](const std::string& line) {
        const bool fails = line.find("getwidth") != std::string::npos;
        return fails ? json{{{"exceptionmsg", evil}}}.dump() : element.dump();
      }),
      6);
  const Folder folder;
  for (const auto& command :
       std::vector<std::vector<std::string>>{{"find", "A"},
                                             {"tree"},
                                             {"tree", "--paths"},
                                             {"describe", "--images", folder.path},
                                             {"--json", "describe"},
                                             {"width", "A"}}) {
    const auto result = tarni(command);
    EXPECT_THAT(result.output, HasSubstr(shown.substr(0, 28))) << command.front();
    EXPECT_THAT(result.output,
                Not(testing::ContainsRegex("[\x01-\x09\x0B-\x1F\x7F]|\u009B|\u202E")));
    EXPECT_THAT(result.output, Not(HasSubstr("\nA"))) << command.front();
  }
  const ScriptedAgent recorder(kRecorderPort, [&](Peer& peer) {
    peer.sendFramed(json{{{"tagName", "A"}, {"class", evil}, {"xpath:position", evil}}}.dump());
    peer.readLine();
    peer.sendFramed(json{{{"tagName", "A"}, {"class", evil}, {"xpath:position", evil}}}.dump());
    peer.readLine();
  });
  const auto spied = tarni({"spy", "--count", "1"}).output;
  // A shell reads the suggestion as what came, and does not run what is in it.
  const auto words = spied.substr(spied.find("tarni find ") + 11);
  Program shell({"bash", "-c", "printf '%s' " + words.substr(0, words.find(" --xpath"))});
  shell.wait(10s);
  EXPECT_EQ(shell.output(), evil) << spied;
}

// The wire calls it displayed: the frame lies within the screen.
TEST_F(CommandLine, TellsWhatIsOnAPageThatIsNotShownOrCoveredFromWhatIsOnScreen) {
  const auto view = [](const char* text, const char* isVisible, const char* isTappable = "true") {
    return json{{"elementType", "UIButton"},
                {"childCount", "0"},
                {"text", text},
                {"isVisibleInViewHierarchy", isVisible},
                {"isVisibleInWindowFrame", "true"},
                {"isUserInteractionEnabled", "true"},
                {"isProbablyTappable", isTappable},
                {"rectangle", {{"width", "3.00"}, {"height", "4.00"}}}};
  };
  const std::map<std::string, std::string> answers = {
      {"findelements", R"([{"elementID":"ID"}])"},
      {"gettext", answerOf("Next")},
      {"getwidth", answerOf("3")},
      {"getheight", answerOf("4")},
      {"isdisplayed", answerOf("true")},
      {"ai_findelements",
       json{view("Next", "false"), view("Back", "true"), view("Below", "true", "false")}.dump()}};
  agent_ = std::make_unique<ScriptedAgent>(kPlaybackPort, answering([&answers](const auto& line) {
                                             const auto found =
                                                 answers.find(json::parse(line)["functionname"]);
                                             return found != answers.end() ? found->second : "[]";
                                           }),
                                           6);
  const auto displayed = tarni({"displayed", "--text", "Next"});
  EXPECT_EQ(displayed.code, 1);
  EXPECT_EQ(displayed.output, "false\n");
  EXPECT_THAT(tarni({"find", "--long"}).output, HasSubstr("false"));
  EXPECT_EQ(tarni({"find", "--on-screen"}).code, 1);
  EXPECT_THAT(tarni({"tree"}).output,
              AllOf(HasSubstr("\"Next\"  (off screen)\n"), HasSubstr("\"Below\"  (covered)\n")));
  for (const auto* command : {"tree", "describe"}) {
    EXPECT_THAT(tarni({command, "--on-screen"}).output,
                AllOf(HasSubstr("Back"), Not(HasSubstr("Next")), Not(HasSubstr("Below"))));
  }
}

class Running : public testing::Test {
 protected:
  // Any library does to be loaded: what the launcher does with it is not at issue here.
  Program::Environment environment_ = {{"TARNI_LIBRARY", "/lib/x86_64-linux-gnu/libm.so.6"}};
};

TEST_F(Running, PassesOnTheExitCodeTheEnvironmentAndSignals) {
  const auto shell = [this](const std::string& script) {
    return tarni({"run", "--", "sh", "-c", script}, environment_);
  };
  EXPECT_EQ(shell("exit 7").code, 7);
  EXPECT_EQ(shell("kill -9 $$").code, 128 + 9);
  EXPECT_THAT(shell("echo preload=$LD_PRELOAD").output,
              HasSubstr("preload=/lib/x86_64-linux-gnu/"));
  Program program({built("bin/tarni"), "run", "--", "sh", "-c",
                   "trap 'exit 42' TERM; echo armed; while :; do sleep 0.05; done"},
                  environment_);
  ASSERT_TRUE(eventually([&] { return program.output().find("armed") != std::string::npos; }));
  program.signal(SIGTERM);
  EXPECT_EQ(program.wait(10s), 42);
}

TEST_F(Running, RefusesWhatCannotWork) {
  const auto alone = tarni({"--connect-timeout", "0", "find"});
  EXPECT_EQ(alone.code, 3);
  EXPECT_THAT(alone.output, HasSubstr("nothing listens on 9898"));
  EXPECT_EQ(tarni({"wait", "--timeout", "0"}).code, 3);
  const auto missing = tarni({"run", "--", "/no/such/program"}, environment_);
  EXPECT_EQ(missing.code, 3);
  EXPECT_THAT(missing.output, HasSubstr("cannot start /no/such/program"));
  EXPECT_EQ(tarni({"run", "--", "/tmp"}, environment_).code, 3);
  EXPECT_EQ(tarni({"--in", "name", "run", "--", "true"}, environment_).code, 2);
  EXPECT_THAT(tarni({"run", "--", "true"}, {{"TARNI_LIBRARY", "/none"}}).output,
              HasSubstr("TARNI_LIBRARY names no file"));
  const ScriptedAgent other(kPlaybackPort, [](Peer&) {});
  EXPECT_THAT(tarni({"run", "--", "true"}, environment_).output, HasSubstr("9898 is taken"));
}

TEST_F(Running, SaysThatAProgramUsesNoQtWhileItRunsOrWhenItHasEnded) {
  const auto ended = tarni({"run", "--", "sh", "-c", "true"}, environment_).output;
  EXPECT_THAT(ended, HasSubstr("sh has ended and used no Qt"));
  Program wrapper({built("bin/tarni"), "run", "--isolated", "--", "sh", "-c", "sleep 30; true"},
                  environment_);
  const auto said = [&wrapper](const char* text) {
    return wrapper.output().find(text) != std::string::npos;
  };
  EXPECT_TRUE(eventually([&said] { return said("no Qt so far in ") && said(", sleep (process "); }))
      << wrapper.output();
  EXPECT_FALSE(said("reach it with"));
}

}  // namespace
}  // namespace tarni::test
