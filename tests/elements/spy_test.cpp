// Spy mode: which element is picked, and what is told of it.
#include "agent/Queue/RecorderQueue.h"
#include "agent/elements/UIViewStorage.h"
#include "agent/elements/UIView_Highlight.h"
#include "agent/recording/ElementSpy.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "tests/elements/CommandScreen.h"

namespace tarni::test {
namespace {

using headless::Button;
using headless::Label;
using headless::View;
using platform::CGPoint;
using platform::UIViewRef;

class Spy : public CommandScreen {
 protected:
  Spy() { RecorderQueue::get().clearRecorderQueue(); }

  // What was enqueued for a touch.
  static Json spy(const UIViewRef& touched, CGPoint point) {
    EXPECT_TRUE(ElementSpy().createSpyHierarchy(touched, point));
    return RecorderQueue::get().dequeue().value_or(Json());
  }
  // The label of the selection, by which the tests tell views apart.
  static std::string selected(const UIViewRef& touched, CGPoint point) {
    return spy(touched, point).at(0).at("label");
  }

  std::shared_ptr<View> box = add<View>().frame({{50, 100}, {200, 200}}).label("box").get();
};

TEST_F(Spy, PicksTheLastListedOfTheDeepestStrictlyAroundThePoint) {
  const auto inner = plainView({{10, 10}, {100, 100}}, *box);
  inner->setAccessibilityLabel("inner");
  headless::build<View>().frame({{10, 10}, {20, 20}}).label("deepest").in(*inner);
  headless::build<View>().frame({{60, 60}, {80, 80}}).label("in front").in(*box);
  headless::build<View>().frame({{0, 0}, {200, 200}}).label("hidden").hidden().in(*box);
  EXPECT_EQ(selected(box, {25, 25}), "deepest");
  EXPECT_EQ(selected(box, {50, 50}), "inner");
  EXPECT_EQ(selected(box, {80, 80}), "in front");
  EXPECT_EQ(selected(box, {150, 150}), "box");
  EXPECT_EQ(selected(box, {10, 50}), "box") << "an edge is not inside";
  EXPECT_EQ(selected(box, {10.5, 50}), "inner");

  const auto button = headless::build<Button>("Go").frame({{0, 0}, {100, 100}}).in(*box);
  button->setAccessibilityLabel("button");
  headless::build<Label>("part").frame({{0, 0}, {100, 100}}).in(*button);
  EXPECT_EQ(selected(button, {50, 50}), "button") << "and is not looked into";
}

TEST_F(Spy, DescribesTheSelectionAndItsAncestorsUpToTheWindow) {
  const auto inner = headless::build<View>().frame({{0, 0}, {100, 100}}).in(*box);
  const auto label = headless::build<Label>("Hello").frame({{10, 10}, {50, 20.6}}).in(*inner);
  label->setAccessibilityIdentifier("greeting");
  UIViewsManager manager;
  manager.GetAllViews(window, true);
  UIViewStorage& storage = UIViewStorage::sharedObject();
  const long lastIndex = std::stol(storage._key());
  const std::size_t stored = storage._viewsStorageWithIdentifier().size();

  const Json hierarchy = spy(box, {20, 20});
  ASSERT_EQ(hierarchy.size(), 3U) << "the window is not described";
  EXPECT_EQ(hierarchy[0], Json::parse(R"({
      "tagName":"UILabel", "class":"UILabel", "id":"greeting", "label":"", "sahiText":"Hello",
      "name":"Hello", "mode":"native", "logicalname":"Hello",
      "xpath:position":"\\UIView[0]\\UIView[0]\\UILabel[0]",
      "X":"0", "Y":"0", "height":"21", "width":"50",
      "parent":{"title":"UIView", "class":"UIView", "id":"", "label":"",
                "X":"0", "Y":"0", "height":"100", "width":"100"}})"));
  EXPECT_EQ(hierarchy[1].at("logicalname"), "UIView") << "its class, for want of a text";
  EXPECT_EQ(hierarchy[2].at("logicalname"), "box");
  EXPECT_EQ(hierarchy[2].at("parent").at("class"), "UIWindow");

  EXPECT_EQ(storage.count(), 3);
  EXPECT_EQ(storage._key(), std::to_string(lastIndex + 3));
  EXPECT_EQ(storage._viewsStorageWithIdentifier().size(), stored + 3);
  EXPECT_EQ(storage.viewAtIndex(lastIndex + 1), label);
  EXPECT_EQ(storage.viewAtIndex(lastIndex + 3), box);
  EXPECT_TRUE(Highlight::isHighlighted(label));
}

}  // namespace
}  // namespace tarni::test
