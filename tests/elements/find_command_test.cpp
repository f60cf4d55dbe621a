// The commands that search.
#include "agent/elements/UIViewFinder.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/TextField.h"
#include "tests/elements/CommandScreen.h"

namespace tarni::test {
namespace {

using headless::Button;
using headless::Label;
using headless::TextField;
using headless::View;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

class FindCommand : public CommandScreen {
 protected:
  static auto found(const Json& fields) { return viewsOf(command(fields)); }
};

TEST_F(FindCommand, FindeditablecomponentsByXpathFindsTheFirstViewThere) {
  const auto find = [](const std::string& xpath) {
    return found({{"functionname", "findeditablecomponents"},
                  {"accessortype", "xpath"},
                  {"accessorvalue", xpath}});
  };
  const auto label = add<Label>("no field").className("XpathLabel").get();
  EXPECT_THAT(find("\\XpathLabel[0]"), IsEmpty()) << "there is no text field on the screen";
  const auto field = add<TextField>("a").className("XpathField").get();
  EXPECT_THAT(find("\\XpathField[0]"), ElementsAre(field));
  EXPECT_THAT(find("\\XpathLabel[0]"), ElementsAre(label)) << "the position decides alone";
  EXPECT_THAT(find("\\XpathField[1]"), IsEmpty());
}

TEST_F(FindCommand, SearchWaitsForTheViewControllerAtMostTenSeconds) {
  add<Label>("a");
  GlobalVars::sharedInstance().set_viewControllerLoaded("LOADING");
  EXPECT_EQ(found({{"functionname", "findelements"}, {"tagname", "UILabel"}}).size(), 1U);
  const auto& waits = environment.application().runLoopRuns();
  ASSERT_EQ(waits.size(), 100U);
  EXPECT_EQ(waits.front().mode, platform::kCFRunLoopDefaultMode);
  EXPECT_EQ(waits.front().seconds, 0.1);

  environment.application().clearRunLoopRuns();
  GlobalVars::sharedInstance().set_viewControllerLoaded("LOADED");
  found({{"functionname", "findelements"}});
  EXPECT_TRUE(environment.application().runLoopRuns().empty());
}

}  // namespace
}  // namespace tarni::test
