// The stores that name views: the element cache, the spy store, the highlight's memory of borders.
#include "agent/elements/UIViewStorage.h"
#include "agent/elements/UIView_Highlight.h"
#include "backends/headless/views/Label.h"
#include "tests/elements/CommandScreen.h"

namespace tarni::test {
namespace {

using headless::Label;
using testing::ElementsAre;
using testing::IsEmpty;

class Stores : public CommandScreen {
 protected:
  static Highlight::Border borderOf(const platform::UIViewRef& view) {
    return {view->layer().borderWidth(), view->layer().borderColor()};
  }

  UIViewMemoryCache& cache = UIViewMemoryCache::sharedInstance();
  const Highlight::Border green{4.0, platform::CGColor{0, 1, 0, 1}};
  const Highlight::Border red{2.0, platform::CGColor{1, 0, 0, 1}};
};

TEST_F(Stores, SpyStoreNumbersViewsFromZero) {
  UIViewStorage storage;
  EXPECT_EQ(storage._key(), "-1");
  EXPECT_EQ(storage.commonString(), "This is string.");
  const auto first = add<Label>("one").get();
  auto second = add<Label>("two").get();
  storage.registerView(first);
  storage.registerView(second);
  storage.registerView(first);
  EXPECT_EQ(storage._key(), "2");
  EXPECT_EQ(storage.viewAtIndex(0), first);
  EXPECT_EQ(storage.viewAtIndex(1), second);
  EXPECT_EQ(storage.viewAtIndex(3), nullptr);
  EXPECT_EQ(storage.viewAtIndex(-1), nullptr);

  second->removeFromSuperview();
  second.reset();
  EXPECT_EQ(storage.viewAtIndex(1), nullptr);
  EXPECT_EQ(storage.viewAtIndex(2), first) << "indices keep their meaning";
  EXPECT_EQ(storage._viewsStorageWithIdentifier().size(), 3U);
}

TEST_F(Stores, AHighlightInsideAnotherLeavesNoGreenBehind) {
  const auto label = add<Label>("one").get();
  Highlight::deHighlightView(label, red.width, red.color);
  Highlight::highlightView(label);
  time.pass(0.5);
  EXPECT_EQ(Highlight::ownBorder(label), red);
  Highlight::highlightView(label);
  time.pass(0.6);
  EXPECT_EQ(borderOf(label), green) << "the second one lasts a second of its own";
  time.pass(0.5);
  EXPECT_EQ(borderOf(label), red);
}

TEST_F(Stores, AHighlightTakenOffDoesNotTouchTheBorderLater) {
  const auto label = add<Label>("one").get();
  Highlight::highlightView(label);
  Highlight::deHighlightView(label);
  EXPECT_EQ(borderOf(label), Highlight::Border{});
  Highlight::deHighlightView(label, red.width, red.color);
  time.pass(1.1);
  EXPECT_EQ(borderOf(label), red);
}

}  // namespace
}  // namespace tarni::test
