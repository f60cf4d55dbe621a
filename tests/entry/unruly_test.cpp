// Programs that are not easy hosts: whatever they do, commands are answered and they stay what they
// are.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/Program.h"
#include "tests/support/SessionWire.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using std::chrono::steady_clock;
using testing::IsEmpty;
using testing::SizeIs;

const nlohmann::json kNothing = nlohmann::json::array();

class Unruly : public testing::TestWithParam<std::string> {
 protected:
  void start(const std::string& argument = "") {
    Program::Environment environment = agentEnvironment();
    environment["TARNI_SESSION"] = session_.socket();
    program_ = std::make_unique<Program>(
        std::vector<std::string>{built("bin/qt-unruly-" + GetParam()), argument}, environment);
    playback_ = std::make_unique<Playback>();
    ASSERT_TRUE(shows("Ready")) << program_->output();
  }
  const Playback& playback() const { return *playback_; }
  nlohmann::json press(const std::string& title) const {
    return playback().command("clickelement", playback().one("UIButton", "text", title));
  }
  bool shows(const std::string& text) const {
    return eventually([&] { return playback().find("UILabel", "text", text).size() == 1; });
  }

  const SessionFolder session_;
  std::unique_ptr<Program> program_;
  std::unique_ptr<Playback> playback_;
};

INSTANTIATE_TEST_SUITE_P(Qt, Unruly, testing::Values("5", "6"));

TEST_P(Unruly, OnesThatBlockAreWaitedForWithTheSocketsAlive) {
  start();
  const auto before = steady_clock::now();
  playback().wire().sendLine(
      nlohmann::json{{"functionname", "clickelement"},
                     {"accessorvalue", playback().one("UIButton", "text", "Block")}}
          .dump());
  playback().wire().sendLine(R"({"functionname":"findelements","tagname":"UISwitch"})");
  EXPECT_FALSE(playback().wire().isClosed(std::chrono::seconds(1)));
  for (int answers = 0; answers < 2; ++answers) EXPECT_EQ(playback().wire().readMessage(), "[]");
  EXPECT_TRUE(shows("Blocked"));
  EXPECT_GE(steady_clock::now() - before, std::chrono::seconds(3));
}

// Who does not want to wait is told what there is to wait for; the others are answered after it.
TEST_P(Unruly, OnesThatBlockAreNamedToSessions) {
  start();
  const SessionWire one(session_.socket());
  const SessionWire other(session_.socket());
  one.send("element.click", {{"element", one.find({{"text", "Block"}})["element"]}}, 1);
  nlohmann::json error;
  ASSERT_TRUE(eventually([&] {
    other.send("app.info", {{"timeout", 300}}, 1);
    const nlohmann::json answer = other.answer();
    error = answer.value("error", nlohmann::json());
    return !error.is_null();
  }));
  one.send("tree.get", nlohmann::json::object(), 2);
  EXPECT_EQ(error["data"]["error"], "timeout");
  // The pointer comes in with the click.
  EXPECT_THAT(error["data"]["beganWith"].get<std::string>(),
              testing::AnyOf(testing::StartsWith("Enter Q"), testing::StartsWith("MouseButton")));
  EXPECT_GT(error["data"]["busyMs"], 100);
  EXPECT_TRUE(one.answer()["result"].contains("costs"));
  EXPECT_THAT(one.answer()["result"]["elements"].dump(), testing::HasSubstr("Blocked"));
}

TEST_P(Unruly, OnesThatEndInAGestureEndAsTheyWouldAlone) {
  start();
  EXPECT_THROW(press("End"), std::exception);
  EXPECT_EQ(program_->wait(std::chrono::seconds(10)), 7) << program_->output();
}

TEST_P(Unruly, OnesThatDeleteWhatIsTouchedOrLookedAtLoseNothingElse) {
  start();
  EXPECT_EQ(press("Vanish"), kNothing);
  EXPECT_TRUE(shows("Vanished"));
  EXPECT_THAT(playback().find("UIButton", "text", "Vanish"), IsEmpty());
  EXPECT_THAT(playback().find("UILabel", "text", "Doomed"), SizeIs(20));
  press("Trap");
  EXPECT_THAT(playback().find("", "text", "Doomed"), IsEmpty());
  EXPECT_TRUE(shows("Trapped"));
  EXPECT_THAT(playback().ask({{"functionname", "ai_findelements"}, {"tagname", "UIButton"}}),
              SizeIs(4));
}

TEST_P(Unruly, OnesThatKeepInputToThemselvesAreServedOtherwise) {
  start("--swallow");
  EXPECT_EQ(press("Kept"), kNothing);
  EXPECT_THAT(playback().find("UILabel", "text", "Pressed"), IsEmpty());
  EXPECT_TRUE(shows("Ready"));
}

TEST_P(Unruly, FiltersOfTheProgramSeeTheInputFirst) {
  start("--filter");
  EXPECT_EQ(press("Kept"), kNothing);
  EXPECT_TRUE(shows("Ready"));
  EXPECT_EQ(press("Vanish"), kNothing);
  EXPECT_TRUE(shows("Vanished"));
}

}  // namespace
}  // namespace tarni::test
