// A real program in the hands of `tarni`: its commands over the session channel.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "tests/support/Display.h"
#include "tests/support/Files.h"
#include "tests/support/Program.h"

namespace tarni::test {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class Commands : public testing::TestWithParam<const char*> {
 protected:
  Commands() {
    environment_["XDG_RUNTIME_DIR"] = folder_.path;
    program_ =
        std::make_unique<Program>(std::vector<std::string>{built("bin/tarni"), "run", "--",
                                                           built("bin/qt-sample-") + GetParam()},
                                  environment_);
    EXPECT_EQ(said({"wait", "--timeout", "30"}, 0), "");
  }

  // What it printed; it must end with that code.
  std::string said(std::vector<std::string> words, int code = 0) const {
    const std::string command = testing::PrintToString(words);
    words.insert(words.begin(), built("bin/tarni"));
    Program tool(words, environment_);
    EXPECT_EQ(tool.wait(std::chrono::seconds(30)), code) << command << tool.output();
    return tool.output();
  }

  const Folder folder_;
  const Display display_;
  Program::Environment environment_ = display_.environment();
  std::unique_ptr<Program> program_;
};

INSTANTIATE_TEST_SUITE_P(On, Commands, testing::Values("5", "6"));

TEST_P(Commands, DoWhatAPersonDoes) {
  EXPECT_THAT(said({"list"}), HasSubstr("yes"));
  said({"type", "--text", "User name", "Ada Ω 🐦"});
  said({"click", "--text", "Log in"});
  said({"await", "--visible", "Hello, Ada Ω 🐦", "--enabled", "identifier=details", "--rest"});
  EXPECT_EQ(said({"text", "--placeholder", "User name"}), "Ada Ω 🐦\n");
  said({"press", "--on", "placeholder=User name", "ctrl-a", "Del"});
  EXPECT_THAT(said({"type", "no element"}), HasSubstr("typed into"));
  EXPECT_EQ(said({"text", "--placeholder", "User name"}), "no element\n");
  EXPECT_THAT(said({"click", "--kind", "UITextField"}, 1),
              AllOf(HasSubstr("2 elements of \"kind=UITextField\" fit"), HasSubstr("--nth"),
                    HasSubstr("\"Password\"")));
  said({"set", "--text", "Remember me", "on"});
  EXPECT_EQ(said({"selected", "--text", "Remember me"}), "true\n");
  said({"scroll", "--kind", "UITableView", "--to-text", "Row 19"});
  said({"click", "--text", "Row 19"});
  said({"await", "--text-is", "identifier=status", "Row 19"});
  EXPECT_THAT(said({"click", "--select", "tet=Log in"}, 2), HasSubstr("did you mean \"text\"?"));
  EXPECT_THAT(said({"find", "--text", "log IN"}, 1), HasSubstr("did you mean --text \"Log in\""));
  EXPECT_THAT(said({"find", "uibutton", "--text", "log IN"}, 1),
              HasSubstr("did you mean --text \"Log in\" --tag \"UIButton\"?"));
  EXPECT_THAT(said({"find", "--kind", "UIControl", "--text", "log IN"}, 1),
              HasSubstr("did you mean --text \"Log in\", of a UIButton?"));
  EXPECT_THAT(said({"find", "UIButton", "--text", "of no button"}, 1),
              Not(HasSubstr("did you mean")));
  EXPECT_THAT(said({"find", "QPushButton"}, 1), HasSubstr("did you mean UIButton?"));
  const auto late = said({"await", "--gone", "Log in", "--timeout", "0.1"}, 1);
  EXPECT_THAT(late, HasSubstr("does not: find text=Log in is gone; found 1: \"Log in\""));
  // A dialog with a loop of its own, and a button that is there once it is.
  said({"click", "--text", "Details…"});
  EXPECT_THAT(said({"windows"}), AllOf(HasSubstr("\"Details\""), HasSubstr("modal")));
  said({"click", "--text", "OK", "--wait", "5"});
  said({"await", "--no-window", "Details", "--text-is", "identifier=status", "Accepted"});
  // Handles stay, and the tree tells what changed.
  const auto field = said({"find", "--placeholder", "User name"});
  const auto handle = field.substr(0, field.find('\n'));
  const json tree = json::parse(said({"--json", "tree"}));
  said({"type", handle, "Grace"});
  EXPECT_THAT(said({"tree", "--changes", tree["version"].dump()}),
              AllOf(HasSubstr("\"Grace\""), Not(HasSubstr("\"Row 1\""))));
  EXPECT_THAT(said({"tree", "--xml"}), HasSubstr("placeholder=\"User name\""));
  EXPECT_THAT(said({"text", "999999"}, 1), HasSubstr("no element was ever called 999999"));
}

}  // namespace
}  // namespace tarni::test
