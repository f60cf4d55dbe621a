// `tarni play` of sessions of the session channel, on a program with the agent in it.
#include <gmock/gmock.h>

#include <filesystem>

#include "host/session/Session.h"
#include "tests/host/Tarni.h"
#include "tests/support/Files.h"

namespace tarni::test {
namespace {

using host::Json;
using host::Session;
using host::Step;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

Json element(const std::vector<Json>& finds) {
  Json locators = Json::array();
  for (const Json& find : finds) locators.push_back({{"find", find}});
  return {{"class", "UIButton"}, {"text", "Log in"}, {"locators", locators}};
}

Step step(const std::string& act, const Json& element, const Json& more = Json::object()) {
  Json members = {{"act", act}, {"element", element}};
  members.update(more);
  return Step(members);
}

class Plays : public testing::Test {
 protected:
  Plays() {
    session_.program = {built("bin/tarni-headless")};
    add(step("type", element({{{"identifier", "username"}}}), {{"text", "mária"}}));
    add(step("type", element({{{"identifier", "password"}}}), {{"secret", "Pass word"}}));
    add(step("switch", element({{{"kind", "UISwitch"}}}), {{"checked", true}}));
    add(step("click",
             element({{{"text", "Log on"}}, {{"text", "Log in"}, {"class", "UIButton"}}})));
    add(Step::check(element({{{"identifier", "welcome"}}}), "Hello, mária"));
  }

  void add(const Step& step) { session_.insert(session_.steps().size(), step); }

  Result play(std::vector<std::string> options, const Program::Environment& environment = {}) {
    options.insert(options.begin(), {"play", file_.string(), "--timeout", "1"});
    return tarni(options, environment);
  }

  Session session_;
  const Folder folder_;
  const std::filesystem::path file_ = folder_.path / "session.json";
};

TEST_F(Plays, TakeTheFirstWayThatFitsAndWriteABetterOneWhenAsked) {
  session_.save(file_);
  const auto refused = play({});
  EXPECT_EQ(refused.code, 2);
  EXPECT_THAT(refused.output,
              AllOf(HasSubstr("\"Pass word\""), HasSubstr("TARNI_SECRET_PASS_WORD")));
  EXPECT_EQ(play({"--until", "1"}).code, 0) << "types no secret";
  const auto healed = play({"--update", "--secret", "Pass word=s3cret"});
  EXPECT_EQ(healed.code, 0) << healed.output;
  EXPECT_THAT(healed.output,
              AllOf(HasSubstr("5 of 5 steps passed"), HasSubstr("found by text=Log in"),
                    HasSubstr("1 step was not found by the first way")));
  EXPECT_THAT(healed.output, Not(HasSubstr("s3cret")));
  const auto again = play({"--repeat", "2"}, {{"TARNI_SECRET_PASS_WORD", "s3cret"}});
  EXPECT_EQ(again.code, 0) << again.output;
  EXPECT_THAT(again.output, AllOf(HasSubstr("10 of 10 steps passed"), Not(HasSubstr("found by"))));
}

// As they are in another language.
TEST_F(Plays, TakeWhatStandsInThePlaceOfATextThatIsGoneAndSaySo) {
  while (!session_.steps().empty()) session_.remove(0);
  session_.program = {built("bin/qt-controls-6")};
  add(step("choose", element({{{"identifier", "colour"}}}), {{"value", "Blau"}, {"choice", 2}}));
  add(step("choose", element({{{"kind", "UITabBar"}}}), {{"value", "Two"}, {"choice", 0}}));
  add(Step::check(element({{{"text", "tabs=Two"}}}), std::nullopt));
  session_.save(file_);
  const Program::Environment offscreen{{"QT_QPA_PLATFORM", "offscreen"}};
  const auto healed = play({"--update"}, offscreen);
  EXPECT_EQ(healed.code, 0) << healed.output;
  EXPECT_THAT(healed.output,
              AllOf(HasSubstr("no choice is called \"Blau\": took the one in its place; better "
                              "now: \"Blue\""),
                    HasSubstr("1 step was"), HasSubstr("3 of 3 steps passed")));
  EXPECT_THAT(play({}, offscreen).output, Not(HasSubstr("in its place")));
  session_.replace(0, step("choose", element({{{"identifier", "colour"}}}), {{"value", "Blau"}}));
  session_.save(file_);
  EXPECT_THAT(play({}, offscreen).output, HasSubstr("\"Blau\" cannot be chosen here"));
}

TEST_F(Plays, SayWhatWasThereInsteadAndGoOnWhenAsked) {
  session_.remove(1);
  session_.replace(2, step("click", element({{{"text", "Lug in"}}})));
  session_.save(file_);
  const auto junit = folder_.path / "junit.xml";
  const auto failed = play({"--junit", junit.string()});
  EXPECT_EQ(failed.code, 1);
  EXPECT_THAT(failed.output,
              AllOf(HasSubstr("step 3 (click): not found: text=Lug in fits nothing"),
                    HasSubstr("there is UIButton \"Log in\""), HasSubstr("2 of 4 steps passed")));
  EXPECT_THAT(contents(junit), AllOf(HasSubstr(R"(tests="4" failures="1" skipped="1")"),
                                     HasSubstr("<failure message=\"not found: text=Lug in")));
  const auto rest = play({"--keep-going"});
  EXPECT_EQ(rest.code, 1);
  EXPECT_THAT(rest.output,
              HasSubstr("step 4 (check): the check does not hold: it shows \"Welcome"));
  const auto part = play({"--from", "2", "--until", "2"});
  EXPECT_EQ(part.code, 0) << part.output;
  EXPECT_THAT(part.output, HasSubstr("1 of 1 step passed"));
  EXPECT_THAT(play({"--from", "9"}).output, HasSubstr("has 4 steps: there is no step 9"));
  EXPECT_EQ(play({"--from", "9", "--until", "3"}).code, 2);
  EXPECT_EQ(play({"--port", "9898"}).code, 2);
}

TEST_F(Plays, TypeIntoNoFieldOfAWindowBehindTheOneInFront) {
  while (!session_.steps().empty()) session_.remove(0);
  session_.program = {built("bin/qt-sample-6")};
  const Json field = element({{{"identifier", "username"}}});
  Json nameless = element({{{"class", "UITextField"}, {"focused", true}}});
  nameless["near"] = {{"window", "Tarni Sample"}};
  add(step("type", field, {{"text", "Ada"}}));
  add(step("type", nameless, {{"text", " Byron"}}));
  add(Step::check(field, "Ada Byron"));
  add(step("click", element({{{"identifier", "details"}}})));
  add(step("type", nameless, {{"text", "!"}}));
  session_.save(file_);
  const auto played = play({}, {{"QT_QPA_PLATFORM", "offscreen"}});
  EXPECT_EQ(played.code, 1);
  EXPECT_THAT(played.output,
              HasSubstr("step 5 (type): not found: class=UITextField && focused=true fits nothing; "
                        "in front stands the dialog \"Details\""));
}

}  // namespace
}  // namespace tarni::test
