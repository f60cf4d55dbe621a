#include "agent/core/state/GlobalVars.h"

#include "tests/interaction/Screen.h"

namespace tarni {
namespace {

class GlobalState : public test::Screen {};

TEST_F(GlobalState, EverythingStartsAsNil) {
  const GlobalVars fresh;
  EXPECT_FALSE(fresh._editAbleElement());
  EXPECT_FALSE(fresh._uiWindow());
  EXPECT_FALSE(fresh._uiWindow_Dialog());
  EXPECT_FALSE(fresh._hybridRecordedSteps());
  EXPECT_FALSE(fresh._currentWebView());
  EXPECT_FALSE(fresh._spyMode());
  EXPECT_FALSE(fresh._isPlaybackStarted());
  EXPECT_FALSE(fresh._webViewBase64Image());
  EXPECT_FALSE(fresh._viewControllerLoaded());
  EXPECT_FALSE(fresh._currentUIWindow());
}

TEST_F(GlobalState, FlagsAreComparedExactly) {
  EXPECT_TRUE(GlobalVars::isTrue("true"));
  EXPECT_FALSE(GlobalVars::isTrue("TRUE"));
  EXPECT_FALSE(GlobalVars::isTrue("false"));
  EXPECT_FALSE(GlobalVars::isTrue(std::nullopt));
}

TEST_F(GlobalState, ViewsAreNotKeptAlive) {
  GlobalVars state;
  auto view = std::make_shared<headless::View>();
  state.set_editAbleElement(view);
  EXPECT_EQ(state._editAbleElement(), view);
  view.reset();
  EXPECT_FALSE(state._editAbleElement());
}

TEST_F(GlobalState, TakingTheStepsOfAPageLeavesNone) {
  GlobalVars state;
  state.set_hybridRecordedSteps("steps");
  EXPECT_EQ(state.take_hybridRecordedSteps(), "steps");
  EXPECT_FALSE(state._hybridRecordedSteps());
  EXPECT_FALSE(state.take_hybridRecordedSteps());
}

}  // namespace
}  // namespace tarni
