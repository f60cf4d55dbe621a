// Where applications find UIKit: the double.
#import "tests/ios/uikit/UIKit.h"
