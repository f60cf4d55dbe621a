// Drawing a view and everything in it into the current image context.
#pragma once

#import "tests/ios/uikit/UIKit.h"

void DrawView(UIView* view, CGRect rect);
