// What keys do to the view that has the focus: they are sent as UIKit's keyboard sends them.
#include "agent/session/input/TouchDevices.h"
#include "tests/ios/OnIos.h"

@interface Form : NSObject <UITextFieldDelegate> {
 @public
  BOOL ends_;
  NSUInteger changes_, endings_;
}
@end

@implementation Form
- (BOOL)textFieldShouldReturn:(UITextField*)field {
  return ends_;
}
- (void)changed {
  ++changes_;
}
- (void)ended {
  ++endings_;
}
@end

namespace tarni::test {
namespace {

class Keys : public OnIos {
 protected:
  void press(const char* key) {
    run(devices_.setKey(key, true));
    run(devices_.setKey(key, false));
  }

  session::Fingers fingers_;
  session::TouchDevices devices_{fingers_};
};

TEST_F(Keys, TypeIntoFieldsAndEditorsAndEndThem) {
  UITextField* const field = add<UITextField>([UITextField class], CGRectMake(0, 0, 100, 40));
  UITextView* const editor = add<UITextView>([UITextView class], CGRectMake(0, 50, 100, 40));
  Form* const form = [[[Form alloc] init] autorelease];
  [field setDelegate:form];
  [field addTarget:form action:@selector(changed) forControlEvents:UIControlEventEditingChanged];
  [field addTarget:form action:@selector(ended) forControlEvents:1 << 19];
  [field becomeFirstResponder];
  for (const char* const key : {"a", "ж", "Backspace"}) press(key);
  EXPECT_TRUE([[field text] isEqual:@"a"]);
  EXPECT_EQ(form->changes_, 3U);
  press("Enter");
  EXPECT_EQ(form->endings_, 0U) << "its delegate keeps it";
  form->ends_ = YES;
  press("Enter");
  EXPECT_EQ(form->endings_, 1U);

  [editor becomeFirstResponder];
  for (const char* const key : {"x", "Enter"}) press(key);
  run(devices_.commitText("y"));
  EXPECT_TRUE([[editor text] isEqual:@"x\ny"]);
  run(devices_.setKey("Meta", true));
  press("a");
  run(devices_.setKey("Meta", false));
  press("z");
  EXPECT_TRUE([[editor text] isEqual:@"z"]);
}

}  // namespace
}  // namespace tarni::test
