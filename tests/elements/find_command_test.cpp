// The commands that search.
#include "agent/elements/UIViewFinder.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/TextField.h"
#include "backends/headless/views/Window.h"
#include "tests/elements/Screen.h"

namespace tarni::test {
namespace {

using headless::Button;
using headless::Label;
using headless::TextField;
using headless::View;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

class FindCommand : public Screen {
 protected:
  static auto found(const Json& fields) { return viewsOf(command(fields)); }
};

TEST_F(FindCommand, FindelementsAnswersOneIdentifierAnElement) {
  const auto first = add<Button>("One").get();
  const auto second = add<Button>("Two").get();
  const Json all{{"functionname", "FindElements"}, {"tagname", "uibutton"}, {"accessortype", ""}};
  EXPECT_THAT(answer(all.dump()), MatchesRegex("\\[\\{\"elementID\":\"[0-9A-F-]{36}\"\\},"
                                               "\\{\"elementID\":\"[0-9A-F-]{36}\"\\}\\]"));
  EXPECT_THAT(found(all), ElementsAre(first, second));
  EXPECT_THAT(found({{"functionname", "findelements"},
                     {"tagname", "UIButton"},
                     {"accessortype", "TEXT"},
                     {"accessorvalue", "Two"}}),
              ElementsAre(second));
}

TEST_F(FindCommand, FindelementsForgetsWhatWasFoundBefore) {
  add<Button>("One");
  const Json find{{"functionname", "findelements"}, {"tagname", "UIButton"}};
  const std::string identifier = command(find).at(0).at("elementID");
  EXPECT_NE(command(find).at(0).at("elementID"), identifier);
  EXPECT_EQ(UIViewMemoryCache::sharedInstance().getUIVIewAccordingToElementId(identifier), nullptr);
  EXPECT_THAT(found({{"functionname", "findelements"}, {"tagname", "Nothing"}}), IsEmpty());
  EXPECT_THAT(UIViewMemoryCache::sharedInstance().getAllUIViewsIdentifier(), IsEmpty());
}

TEST_F(FindCommand, FindelementsWithoutWindowFindsNothing) {
  environment.application().setKeyWindow(nullptr);
  EXPECT_THAT(found({{"functionname", "findelements"}}), IsEmpty());
}

TEST_F(FindCommand, FindelementsinsideelementSearchesBelowTheElement) {
  const auto box = add<View>().get();
  const auto inside = headless::build<Label>("x").frame({{0, 0}, {10, 10}}).in(*box);
  add<Label>("x");
  UIViewMemoryCache::sharedInstance().addViewInMemoryCache(box, "box");
  const Json find{{"functionname", "findelementsinsideelement"},
                  {"tagname", "UILabel"},
                  {"accessortype", "text"},
                  {"accessorvalue", "x"},
                  {"datavalue", "box"}};
  EXPECT_THAT(found(find), ElementsAre(inside));
  EXPECT_THAT(found(find), IsEmpty()) << "the search before forgot the parent";
  EXPECT_THAT(UIViewMemoryCache::sharedInstance().getAllUIViewsIdentifier(), IsEmpty());
}

TEST_F(FindCommand, FindeditablecomponentsFindsTextFields) {
  const auto name = add<TextField>("Your NAME").get();
  const auto hidden = add<TextField>("Town").hidden().get();
  add<Label>("Your NAME");
  const auto find = [](const char* type, const char* value) {
    return found({{"functionname", "findeditablecomponents"},
                  {"accessortype", type},
                  {"accessorvalue", value}});
  };
  EXPECT_THAT(find("", ""), ElementsAre(name, hidden));
  EXPECT_THAT(find("text", "Town"), ElementsAre(hidden));
  EXPECT_THAT(find("text", "town"), IsEmpty());
  EXPECT_THAT(find("PartialText", "name"), ElementsAre(name));
  EXPECT_THAT(find("partialtext", ""), ElementsAre(name, hidden));
  EXPECT_THAT(find("id", "Town"), IsEmpty());
}

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

TEST_F(FindCommand, LeavesTheKeyWindowOnlyWhenAskedTo) {
  const auto first = add<Button>("Save").className("TwinButton").get();
  const auto other = std::make_shared<headless::Window>(platform::CGRect{{0, 400}, {390, 100}});
  environment.application().addWindow(other);
  environment.application().setKeyWindow(window);
  const auto build = [&other](const char* title) {
    return headless::build<Button>(title)
        .className("TwinButton")
        .frame({{0, 0}, {50, 30}})
        .in(*other);
  };
  const auto twin = build("Save");
  const auto only = build("Only here");
  const auto find = [](const char* type, const char* value, const std::string& where) {
    return found({{"functionname", "findelements"},
                  {"tagname", "TwinButton"},
                  {"accessortype", type},
                  {"accessorvalue", value},
                  {"window", where}});
  };
  EXPECT_THAT(find("text", "Only here", ""), IsEmpty());
  EXPECT_THAT(find("text", "Only here", "any"), ElementsAre(only));
  EXPECT_THAT(find("text", "Save", "any"), ElementsAre(first)) << "the key window comes first";
  EXPECT_THAT(find("xpath", "\\TwinButton[1]", "any"), ElementsAre(only));
  EXPECT_THAT(find("xpath", "\\TwinButton[0]", ""), ElementsAre(first)) << "the twin took nothing";
  UIViewMemoryCache::sharedInstance().addViewInMemoryCache(only, "only");
  EXPECT_THAT(find("xpath", "\\TwinButton[0]", "only"), ElementsAre(twin));
  UIViewMemoryCache::sharedInstance().addViewInMemoryCache(only, "only");
  EXPECT_THAT(found({{"functionname", "ai_findelements"},
                     {"tagname", "TwinButton"},
                     {"accessorvalue", "only"}}),
              ElementsAre(first));
  UIViewMemoryCache::sharedInstance().addViewInMemoryCache(only, "only");
  EXPECT_THAT(
      found({{"functionname", "ai_findelements"}, {"tagname", "TwinButton"}, {"window", "only"}}),
      ElementsAre(twin, only));
  environment.application().removeWindow(other);
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

TEST_F(FindCommand, AccessorsArriveAsTheHostToolSentThem) {
  const std::string text = "it's \"quoted\" \\ \t\n\u2028 🦊";
  const auto label = add<Label>(text).get();
  EXPECT_THAT(
      found({{"functionname", "findelements"}, {"accessortype", "text"}, {"accessorvalue", text}}),
      ElementsAre(label));
}

TEST_F(FindCommand, LongNamesAreOrdinary) {
  add<Label>("a");
  const std::string longText(100000, 'x');
  EXPECT_THAT(found({{"functionname", "findelements"}, {"tagname", longText}}), IsEmpty());
  for (const char* type : {"text", "partialtext", "xpath", longText.c_str()}) {
    EXPECT_THAT(found({{"functionname", "findelements"},
                       {"accessortype", type},
                       {"accessorvalue", "\\" + longText + "[0]"}}),
                IsEmpty());
  }
  EXPECT_EQ(command({{"functionname", longText}}), Json::array());
}

}  // namespace
}  // namespace tarni::test
