// Finding elements by class and accessor.
#include <random>

#include "agent/interaction/UIView_KIFAdditions.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/TextField.h"
#include "tests/elements/Screen.h"

namespace tarni::test {
namespace {

using headless::Button;
using headless::Label;
using headless::TextField;
using headless::View;
using headless::ViewRef;
using platform::UIViewRef;
using testing::ElementsAre;
using testing::IsEmpty;

class Find : public Screen {
 protected:
  std::vector<UIViewRef> find(const std::string& tagName, const std::string& type,
                              const std::string& value) {
    return findBelow(window, tagName, type, value);
  }
  static std::vector<UIViewRef> findBelow(const UIViewRef& parent, const std::string& tagName,
                                          const std::string& type, const std::string& value) {
    UIViewMemoryCache& cache = UIViewMemoryCache::sharedInstance();
    cache.clearMemoryCache();
    UIViewsManager manager;
    manager.findElements(parent, tagName, type, value);
    std::vector<UIViewRef> views;
    for (const auto& entry : cache.getUIViewsMemoryCache()) views.push_back(entry.view.lock());
    return views;
  }
};

TEST_F(Find, EverythingVisibleByEmptyNames) {
  const auto box = add<View>().get();
  const auto label = headless::build<Label>("a").frame({{0, 0}, {10, 10}}).in(*box);
  add<View>().frame({{5, 5}, {0, 0}});
  EXPECT_THAT(find("", "", ""), ElementsAre(box, label));
  EXPECT_THAT(findBelow(box, "", "", ""), ElementsAre(label)) << "the parent is not tested";
  EXPECT_THAT(findBelow(nullptr, "", "", ""), IsEmpty());
}

TEST_F(Find, ByTheWholeClassNameInAnyCase) {
  const auto button = add<Button>().get();
  const auto mine = add<Button>().className("MyButton").get();
  EXPECT_THAT(find("uibutton", "", ""), ElementsAre(button));
  EXPECT_THAT(find("UIBUTTON", "", ""), ElementsAre(button));
  EXPECT_THAT(find("MyButton", "", ""), ElementsAre(mine));
  EXPECT_THAT(find("UIControl", "", ""), IsEmpty());
  EXPECT_THAT(find("Button", "", ""), IsEmpty());
}

TEST_F(Find, ByExactText) {
  const auto label = add<Label>("Order 66").get();
  const auto field = add<TextField>("Order 66").get();
  field->replaceText("typed");
  add<Label>("order 66");
  EXPECT_THAT(find("", "text", "Order 66"), ElementsAre(label, field));
  EXPECT_THAT(find("", "text", "typed"), IsEmpty()) << "a field is known by its placeholder";
  EXPECT_THAT(find("", "text", "Order"), IsEmpty());
  EXPECT_THAT(find("", "Text", "Order 66"), IsEmpty()) << "accessor types have one case";
}

TEST_F(Find, ByAPartOfTheTextInAnyCase) {
  const auto label = add<Label>("Grüße aus KÖLN").get();
  const auto empty = add<Label>().get();
  EXPECT_THAT(find("UILabel", "partialtext", "köln"), ElementsAre(label));
  EXPECT_THAT(find("UILabel", "partialtext", "GRÜSSE"), IsEmpty());
  EXPECT_THAT(find("UILabel", "partialtext", "GRÜ"), ElementsAre(label));
  EXPECT_THAT(find("UILabel", "partialtext", ""), ElementsAre(label, empty));
}

TEST_F(Find, ByTextOfEveryKindOfCharacter) {
  for (const std::string text : {"it's \"quoted\" \\ and /", "line\nbreak\ttab",
                                 "emoji 🦊🇩🇪 \u2028", "nul", "\x01\x1F\x7F"}) {
    const auto label = add<Label>(text).get();
    EXPECT_THAT(find("", "text", text), ElementsAre(label)) << text;
    EXPECT_THAT(find("", "partialtext", text), ElementsAre(label)) << text;
    label->removeFromSuperview();
  }
}

TEST_F(Find, ByXpathThatWasFiledWhenTheViewWasTagged) {
  add<Label>("first").className("FindLabel");
  const auto second = add<Label>("second").className("FindLabel").get();
  EXPECT_THAT(find("", "xpath", "\\FindLabel[1]"), ElementsAre(second)) << "tagged by this search";
  window->bringSubviewToFront(static_cast<View&>(*window->subviews()[0]).ref());
  EXPECT_THAT(find("", "xpath", "\\FindLabel[1]"), ElementsAre(second)) << "it keeps its position";
  EXPECT_THAT(find("UIView", "xpath", "\\FindLabel[1]"), IsEmpty());
  EXPECT_THAT(find("", "xpath", ""), IsEmpty());
  EXPECT_THAT(find("", "xpath", "\\FindLabel[2]"), IsEmpty());
}

TEST_F(Find, ByXpathOfAnEarlierViewFindsTheOneThatTookItOver) {
  const auto first = add<Label>("first").className("HeirLabel").get();
  find("", "", "");
  first->removeFromSuperview();
  const auto heir = add<Label>("second").className("HeirLabel").get();
  EXPECT_THAT(find("", "xpath", "\\HeirLabel[0]"), ElementsAre(heir));
  window->addSubview(first);
  EXPECT_THAT(find("", "xpath", "\\HeirLabel[0]"), ElementsAre(heir));
}

TEST_F(Find, NothingByAnUnknownAccessor) {
  add<Label>("a");
  EXPECT_THAT(find("", "id", "a"), IsEmpty());
}

TEST_F(Find, OnlyWhatIsVisibleInItsWindow) {
  const auto clip = add<View>().frame({{0, 0}, {100, 100}}).clips().get();
  const auto inside = headless::build<Label>("x").frame({{90, 90}, {50, 50}}).in(*clip);
  headless::build<Label>("x").frame({{200, 200}, {50, 50}}).in(*clip);
  const auto hidden = add<Label>("x").hidden().get();
  EXPECT_THAT(find("UILabel", "text", "x"), ElementsAre(inside, hidden))
      << "what is hidden keeps its place in the window";
}

// The walk works out what clips once a parent; it must say what the rule says of each view alone.
TEST_F(Find, VisibilityInAWalkIsThatOfEachViewAlone) {
  std::mt19937 random(11);
  const auto upTo = [&random](int limit) { return static_cast<double>(random() % limit); };
  std::vector<ViewRef> views;
  for (int made = 0; made < 2000; ++made) {
    const auto view = std::make_shared<View>();
    view->setFrame({{upTo(300) - 100, upTo(600) - 200}, {upTo(6) * 40, upTo(6) * 40}});
    if (random() % 3 == 0) view->setClipsToBounds(true);
    if (random() % 5 == 0) view->setTransform(platform::CGAffineTransform::rotation(upTo(6)));
    if (random() % 9 == 0) view->setTransform(platform::CGAffineTransform::scale(upTo(2), upTo(2)));
    if (random() % 4 == 0) view->setBounds({{0, upTo(100)}, view->bounds().size});
    View& parent = views.empty() ? *window : *views[random() % views.size()];
    parent.addSubview(view);
    views.push_back(view);
  }
  for (const UIViewRef& root : {UIViewRef(window), UIViewRef(views[0]), UIViewRef(views[7])}) {
    std::vector<UIViewRef> expected;
    UIViewsManager manager;
    for (const UIViewRef& view : manager.GetAllViewsForPlayer(root, true)) {
      if (KIFAdditions::isVisibleInWindowFrame(view)) expected.push_back(view);
    }
    EXPECT_EQ(findBelow(root, "", "", ""), expected);
  }
}

TEST_F(Find, AMatchAndTheMatchesInsideIt) {
  const auto outer = add<Label>("same").get();
  const auto inner = headless::build<Label>("same").frame({{0, 0}, {10, 10}}).in(*outer);
  EXPECT_THAT(find("", "text", "same"), ElementsAre(outer, inner));
}

TEST_F(Find, AllOfADeepScreen) {
  const ViewRef deepest = nest(*window, 10000);
  const std::vector<UIViewRef> found = find("", "", "");
  ASSERT_EQ(found.size(), 10000U);
  EXPECT_EQ(found.back(), deepest);
}

TEST_F(Find, ADeepView) {
  const ViewRef deepest = nest(*window, 10000);
  const auto label = headless::build<Label>("deep").frame({{0, 0}, {10, 10}}).in(*deepest);
  EXPECT_THAT(find("", "text", "deep"), ElementsAre(label));
  EXPECT_THAT(find("", "xpath", *xpathOf(label)), ElementsAre(label));
}

TEST_F(Find, AllOfAWideScreen) {
  std::vector<ViewRef> made;
  for (int count = 0; count < 100000; ++count) {
    made.push_back(headless::build<View>().frame({{0, 0}, {10, 10}}).in(*window));
  }
  const std::vector<UIViewRef> found = find("UIView", "", "");
  ASSERT_EQ(found.size(), 100000U);
  EXPECT_EQ(found.front(), made.front());
  EXPECT_EQ(found.back(), made.back());
}

}  // namespace
}  // namespace tarni::test
