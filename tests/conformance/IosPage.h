// PageApplication: an application of UIKit's with a web view between native controls, and a second
// window. A person taps the picture of the page every half a second, until he leaves.
#pragma once

#import "tests/ios/uikit/UIKit.h"

@interface PageApplication : NSObject <UIApplicationDelegate> {
  UIWindow* window_;
  UIButton* close_;
}
// For who derives from it.
- (UIView*)makeWebViewWithFrame:(CGRect)frame;
// In the web view.
- (CGPoint)picture;
- (void)pictureIsTapped;
- (BOOL)isLeft;
@end
