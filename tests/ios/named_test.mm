// Classes of an application's own that say by their names what they are, whatever they derive from:
// wherever the agent goes by the name, they are sent what UIKit's control would be.
#include <nlohmann/json.hpp>

#include "agent/AI/AiAPI.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/Utilities.h"
#include "agent/recording/RecorderAction.h"
#include "agent/recording/RecorderEvent.h"
#include "tests/ios/OnIos.h"

static BOOL gIsOn;

@interface BrandSwitch : UIView
@end

@implementation BrandSwitch
- (BOOL)isOn {
  return gIsOn;
}
- (void)setOn:(BOOL)on {
  gIsOn = on;
}
@end

@interface BrandSegmentedControl : UIView
@end

@implementation BrandSegmentedControl
- (NSInteger)selectedSegmentIndex {
  return 1;
}
- (NSUInteger)numberOfSegments {
  return 2;
}
- (NSString*)titleForSegmentAtIndex:(NSUInteger)index {
  return index == 0 ? @"Day" : @"Week";
}
@end

@interface BrandSegment : UIView
@end

@implementation BrandSegment
@end

@interface BrandScrollView : UIView {
 @public
  CGPoint offset_;
}
@end

@implementation BrandScrollView
- (CGPoint)contentOffset {
  return offset_;
}
- (void)setContentOffset:(CGPoint)offset animated:(BOOL)animated {
  offset_ = offset;
}
@end

// What is merely called so answers as the view that it is.
@interface SwitchTheme : UIView
@end

@implementation SwitchTheme
@end

namespace tarni::test {
namespace {

using nlohmann::json;

class Named : public OnIos {
 protected:
  Named() { UIWaitsAreSkipped = YES; }
  ~Named() override { GlobalVars::sharedInstance().set_isPlaybackStarted(std::nullopt); }

  json ask(const json& command) { return json::parse(answer(command.dump()), nullptr, false); }
  // With the view that the class names as its target.
  json ask(const char* function, const char* className, const char* data = "") {
    const json found = ask({{"functionname", "findelements"}, {"tagname", className}});
    return ask({{"functionname", function},
                {"accessorvalue", found.at(0).at("elementID")},
                {"datavalue", data}});
  }
  // A class that is called a switch and answers as one, whatever it derives from.
  static Class switchClass(const char* superclass, const char* name) {
    Class const cls = objc_allocateClassPair(objc_getClass(superclass), name, 0);
    for (const SEL method : { @selector(isOn), @selector(setOn:) }) {
      Method const own = class_getInstanceMethod([BrandSwitch class], method);
      class_addMethod(cls, method, method_getImplementation(own), method_getTypeEncoding(own));
    }
    objc_registerClassPair(cls);
    return cls;
  }
  static StepDraftRef step(UIView* view) {
    UIViewsManager().identifyViews(ref(view)->window());
    return RecorderAction().describeStep({"Click", ref(view), "", {5, 5}});
  }
};

TEST_F(Named, ASwitchIsRecordedReadAndTurnedAsOneWhateverItDerivesFrom) {
  int count = 0;
  for (const char* const superclass :
       {"UIView", "UIControl", "UIButton", "UILabel", "UITextField", "UITextView", "UIScrollView",
        "UITableViewCell", "UISegmentedControl", "UIWebView", "WKWebView", "UIWebBrowserView"}) {
    SCOPED_TRACE(superclass);
    const std::string named = "Switch" + std::to_string(++count);
    const char* const name = named.c_str();
    Class const cls = switchClass(superclass, name);
    gIsOn = NO;
    UIView* const control = addView(cls, NSMakeRect(0, 0, 50, 30));
    // It would be what is recorded.
    [[[control subviews] lastObject] removeFromSuperview];
    EXPECT_TRUE(RecorderEvent().IsViewIsNotOfEventType(ref(control)));
    EXPECT_EQ(step(control)->actionName, "Mobile_DeSelectSwitch");
    EXPECT_EQ(ask("isselected", name).at(0).at("output"), "false");
    ask("clickelement", name);
    EXPECT_TRUE(gIsOn);
    EXPECT_EQ(ask("isselected", name).at(0).at("output"), "true");
    EXPECT_EQ(step(control)->actionName, "Mobile_SelectSwitch");
  }
}

TEST_F(Named, ASegmentedControlIsRecordedAsItsSegmentAndReadByItsTitles) {
  // One may be called both.
  Class const both = switchClass("BrandSegmentedControl", "BrandSwitchSegmentedControl");
  for (Class const cls : {[BrandSegmentedControl class], both}) {
    UIView* const control = addView(cls, NSMakeRect(0, 0, 100, 30));
    for (const int left : {0, 50}) {
      UIView* const segment =
          [[[BrandSegment alloc] initWithFrame:NSMakeRect(left, 0, 50, 30)] autorelease];
      [control addSubview:segment];
    }
    const platform::UIViewRef second = ref([[control subviews] lastObject]);
    EXPECT_EQ(step(control)->recordedView.lock(), second);
    EXPECT_EQ(Utilities::getUIViewText(second), "Week");
    EXPECT_EQ(ask("gettext", "BrandSegment").at(0).at("output"), "Day;Week;");
    [control removeFromSuperview];
  }
}

TEST_F(Named, AScrollViewIsSwipedAndSaidToScroll) {
  auto* const scroll = add<BrandScrollView>([BrandScrollView class], NSMakeRect(0, 0, 100, 100));
  EXPECT_TRUE(AiAPI().isViewScrollable(ref(scroll)));
  ask({{"functionname", "swipeto"}, {"datavalue", "down"}});
  EXPECT_NE(scroll->offset_.y, 0);
  ask({{"functionname", "swipereset"}});
  EXPECT_EQ(scroll->offset_.y, 0);
}

TEST_F(Named, WhatDoesNotAnswerAsOneIsNone) {
  UIView* const theme = addView([SwitchTheme class], NSMakeRect(0, 0, 50, 30));
  EXPECT_EQ(step(theme)->actionName, "Click");
  EXPECT_EQ(ask("isselected", "SwitchTheme").at(0).at("output"), "false");
}

}  // namespace
}  // namespace tarni::test
