// Utilities, the pictures of views. Main thread, unless said otherwise.
#pragma once

#include <string>

#include "platform/Task.h"
#include "platform/UIKit/UIImage.h"
#include "platform/UIKit/UIView.h"

namespace tarni::Utilities {

// Null or empty when the view cannot be drawn.
platform::Task<platform::UIImageRef> getUIImageOfUIView(platform::UIViewRef view);
// The 300 by 200 points from 100 left of and above `point` (coordinates of the view).
platform::Task<platform::UIImageRef> getUIImageOfUIViewTouchedArea(platform::UIViewRef view,
                                                                   platform::CGPoint point);

// The same as Base64 text of a JPEG of quality 0.6; empty when there is no picture.
platform::Task<std::string> getBase64StringOfUIImageOfUIView(platform::UIViewRef view);
platform::Task<std::string> getBase64StringOfUIImageOfUIViewTouchedArea(platform::UIViewRef view,
                                                                        platform::CGPoint point);
// Any thread.
std::string getBase64StringOfUIImage(const platform::UIImageRef& image);

}  // namespace tarni::Utilities
