// Descriptions for finding elements from a picture.
#include <random>

#include "agent/AI/AiAPI.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/ImageView.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/ScrollView.h"
#include "backends/headless/views/TextField.h"
#include "tests/elements/CommandScreen.h"

namespace tarni::test {
namespace {

using headless::Button;
using headless::Label;
using headless::ScrollView;
using headless::TextField;
using headless::View;
using testing::ElementsAre;

class Ai : public CommandScreen {
 protected:
  static Json describe(const platform::UIViewRef& view) {
    return complete(AiAPI().getViewProperty(view));
  }
  static Json findAll(const std::string& type) {
    return command({{"functionname", "ai_findelements"}, {"tagname", type}});
  }
};

TEST_F(Ai, DescriptionHasItsKeysInOrder) {
  const auto scroll = add<ScrollView>().frame({{10, 20}, {200, 200}}).get();
  scroll->scrollTo({0, 250});
  const auto label = headless::build<Label>("Hello").frame({{10.5, 330}, {80, 30.125}}).in(*scroll);
  headless::build<View>().in(*label);
  const Json description = describe(label);
  std::vector<std::string> keys;
  for (const auto& [key, value] : description.items()) keys.push_back(key);
  EXPECT_THAT(keys, ElementsAre("elementID", "text", "elementType", "imageBase64", "childCount",
                                "isProbablyTappable", "isVisibleInViewHierarchy",
                                "isVisibleInWindowFrame", "isUserInteractionEnabled", "isHidden",
                                "isEditable", "isScrollable", "isImageObject", "rectangle"));
  EXPECT_EQ(description["text"], "Hello");
  EXPECT_EQ(description["elementType"], "UILabel");
  EXPECT_EQ(description["childCount"], "1");
  EXPECT_TRUE(description["imageBase64"].get<std::string>().starts_with("/9j/"));
  EXPECT_EQ(description["rectangle"].dump(),
            R"({"width":"80.00","height":"30.12","x":"20.50","y":"100.00"})");
  EXPECT_EQ(UIViewMemoryCache::sharedInstance().getUIVIewAccordingToElementId(
                description["elementID"].get<std::string>()),
            label);
}

TEST_F(Ai, FlagsTellStateAndKind) {
  EXPECT_EQ(describe(add<TextField>("a").className("MyField").get())["isEditable"], "true");
  EXPECT_EQ(describe(add<View>().frame({{0, 0}, {0, 0}}).get())["imageBase64"], "");
  const auto hiddenBox = add<View>().hidden().get();
  const auto inside = headless::build<Button>("b").frame({{0, 0}, {10, 10}}).in(*hiddenBox);
  inside->setUserInteractionEnabled(false);
  const Json button = describe(inside);
  EXPECT_EQ(button["isEditable"], "false");
  EXPECT_EQ(button["isHidden"], "false");
  EXPECT_EQ(button["isVisibleInViewHierarchy"], "false");
  EXPECT_EQ(button["isVisibleInWindowFrame"], "true");
  EXPECT_EQ(button["isProbablyTappable"], "false");
  EXPECT_EQ(button["isUserInteractionEnabled"], "false");
  EXPECT_EQ(describe(hiddenBox)["isHidden"], "true");
  EXPECT_EQ(describe(add<headless::ImageView>().get())["isImageObject"], "true");
  EXPECT_EQ(button["isImageObject"], "false");
}

// What is worked out once for all of them must be what is true of each alone.
TEST_F(Ai, DescriptionsOfAScreenAreThoseOfEachViewAlone) {
  std::mt19937 random(5);
  const auto upTo = [&random](int limit) { return static_cast<double>(random() % limit); };
  std::vector<headless::ViewRef> parents{window};
  for (int made = 0; made < 400; ++made) {
    const auto view = made % 3 ? std::make_shared<View>() : std::make_shared<Button>("b");
    view->setFrame({{upTo(300) - 40, upTo(600) - 90}, {upTo(9) * 20, upTo(9) * 20}});
    view->setHidden(random() % 9 == 0);
    view->setClipsToBounds(random() % 3 == 0);
    view->setUserInteractionEnabled(random() % 8 != 0);
    if (random() % 6 == 0) view->setTransform(platform::CGAffineTransform::rotation(upTo(6)));
    parents[random() % parents.size()]->addSubview(view);
    parents.push_back(view);
  }
  Json descriptions = findAll("");
  const auto views = viewsOf(descriptions);
  ASSERT_GT(views.size(), 400U);
  for (std::size_t index = 0; index < views.size(); ++index) {
    Json alone = describe(views[index]);
    alone["elementID"] = descriptions[index]["elementID"];
    EXPECT_EQ(descriptions[index].dump(), alone.dump());
  }
}

}  // namespace
}  // namespace tarni::test
