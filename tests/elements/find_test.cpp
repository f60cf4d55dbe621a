// Finding elements by class and accessor.
#include <random>

#include "agent/interaction/UIView_KIFAdditions.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/TextField.h"
#include "tests/elements/CommandScreen.h"

namespace tarni::test {
namespace {

using headless::Label;
using headless::TextField;
using headless::View;
using headless::ViewRef;
using platform::UIViewRef;
using testing::ElementsAre;

class Find : public CommandScreen {
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

TEST_F(Find, ByXpathOfAnEarlierViewFindsTheOneThatTookItOver) {
  const auto first = add<Label>("first").className("HeirLabel").get();
  find("", "", "");
  first->removeFromSuperview();
  const auto heir = add<Label>("second").className("HeirLabel").get();
  EXPECT_THAT(find("", "xpath", "\\HeirLabel[0]"), ElementsAre(heir));
  window->addSubview(first);
  EXPECT_THAT(find("", "xpath", "\\HeirLabel[0]"), ElementsAre(heir));
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

TEST_F(Find, ADeepView) {
  const ViewRef deepest = nest(*window, 10000);
  const auto label = headless::build<Label>("deep").frame({{0, 0}, {10, 10}}).in(*deepest);
  EXPECT_THAT(find("", "text", "deep"), ElementsAre(label));
  EXPECT_THAT(find("", "xpath", *xpathOf(label)), ElementsAre(label));
}

TEST_F(Find, WaitsForTheViewControllerAtMostTenSeconds) {
  add<Label>("a");
  const Json fields{{"functionname", "findelements"}, {"tagname", "UILabel"}};
  GlobalVars::sharedInstance().set_viewControllerLoaded("LOADING");
  EXPECT_EQ(command(fields).size(), 1U);
  const auto& waits = environment.application().runLoopRuns();
  ASSERT_EQ(waits.size(), 100U);
  EXPECT_EQ(waits.front().mode, platform::kCFRunLoopDefaultMode);
  EXPECT_EQ(waits.front().seconds, 0.1);
  GlobalVars::sharedInstance().set_viewControllerLoaded("LOADED");
  command(fields);
  EXPECT_EQ(waits.size(), 100U);
}

}  // namespace
}  // namespace tarni::test
