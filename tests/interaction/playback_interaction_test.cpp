#include "agent/interaction/PlayBackInteractionMethods.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/Switch.h"
#include "tests/support/Screen.h"

namespace tarni {
namespace {

using headless::build;
using test::complete;

class PlayBackInteraction : public test::Screen {
 protected:
  bool click(const headless::ViewRef& view) {
    return complete(PlayBackInteractionMethods().performClickOnUIView(view));
  }
  std::string phases() { return environment.application().eventLog().phases(); }
};

TEST_F(PlayBackInteraction, ASwitchIsToggledWithoutTouchAlsoByWhatIsInItUnlessItIsTheTopmost) {
  const auto control = build<headless::Switch>().frame({{0, 0}, {50, 30}}).in(*window);
  const auto label = build<headless::Label>("on").in(*build<headless::View>().in(*control));
  int changes = 0;
  control->onChange([&] { ++changes; });
  EXPECT_TRUE(click(control));
  EXPECT_TRUE(control->isOn());
  EXPECT_TRUE(click(label));
  EXPECT_FALSE(control->isOn());
  EXPECT_EQ(changes, 0) << "the application is not told";
  EXPECT_EQ(phases(), "");
  control->removeFromSuperview();
  label->removeFromSuperview();
  control->addSubview(label);
  EXPECT_TRUE(click(label));
  EXPECT_FALSE(control->isOn());
  EXPECT_EQ(phases(), "Began Ended");
}

}  // namespace
}  // namespace tarni
