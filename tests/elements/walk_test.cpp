// The two walks over the view tree.
#include "agent/elements/UIViewFinder.h"
#include "agent/elements/UIView_Highlight.h"
#include "backends/headless/views/Label.h"
#include "tests/elements/CommandScreen.h"

namespace tarni::test {
namespace {

using headless::Label;
using headless::View;
using testing::ElementsAre;
using testing::IsEmpty;

class Walk : public CommandScreen {
 protected:
  UIViewsManager manager;
};

TEST_F(Walk, OfRecordingLeavesOutWhatIsHidden) {
  const auto hidden = add<View>().hidden().get();
  const auto below = headless::build<Label>("a").in(*hidden);
  EXPECT_THAT(manager.GetAllViews(window, true), IsEmpty());
  EXPECT_EQ(tagOf(hidden, kRecordingTag), std::nullopt);
  EXPECT_EQ(tagOf(below, kRecordingTag), std::nullopt);
  EXPECT_THAT(manager.GetAllViewsForPlayer(window, true), ElementsAre(hidden, below));
  EXPECT_NE(tagOf(below, kPlaybackTag), std::nullopt);
}

TEST_F(Walk, TagsEachViewOnce) {
  const auto label = add<Label>("a").get();
  manager.GetAllViews(window, true);
  const auto tag = tagOf(label, kRecordingTag);
  ASSERT_NE(tag, std::nullopt);
  manager.GetAllViews(window, true);
  manager.GetAllViewsForPlayer(window, true);
  EXPECT_EQ(tagOf(label, kRecordingTag), tag);
  EXPECT_EQ(tagOf(window, kRecordingTag), std::nullopt) << "the root is no part of the walk";
}

TEST_F(Walk, TakesOffLeftoverHighlightsAndNoLiveOneNorOtherBorder) {
  const platform::CGColor green{0, 1, 0, 1};
  const platform::CGColor nearlyGreen{0, 1, 0, 0.5};
  const auto leftover = add<Label>("a").get();
  const auto thin = add<Label>("b").get();
  const auto own = add<Label>("c").get();
  const auto live = add<Label>("d").get();
  for (int pass = 0; pass < 2; ++pass) {
    Highlight::deHighlightView(leftover, 4.0, green);
    Highlight::deHighlightView(thin, 3.9, green);
    Highlight::deHighlightView(own, 4.0, nearlyGreen);
    Highlight::highlightView(live);
    pass == 0 ? manager.GetAllViews(window, true) : manager.GetAllViewsForPlayer(window, true);
    EXPECT_EQ(leftover->layer().borderWidth(), 0);
    EXPECT_EQ(thin->layer().borderWidth(), 3.9);
    EXPECT_EQ(own->layer().borderWidth(), 4.0);
    EXPECT_EQ(own->layer().borderColor(), nearlyGreen);
    EXPECT_TRUE(Highlight::isHighlighted(live));
  }
}

}  // namespace
}  // namespace tarni::test
