// The kinds of views: which class of UIKit is presented with which interfaces of the seam.
//
// Each kind has a file in controls/, which defines it and how it is made. Main thread.
#pragma once

#include <memory>

#include "backends/ios/views/View.h"

namespace tarni::ios {

// A View of the most special kind that fits the view's class.
std::shared_ptr<View> makeKind(::UIView* view);

std::shared_ptr<View> makeButton(::UIView* view);
std::shared_ptr<View> makeControl(::UIView* view);
std::shared_ptr<View> makeLabel(::UIView* view);
std::shared_ptr<View> makeScrollView(::UIView* view);
std::shared_ptr<View> makeSegmentedControl(::UIView* view);
std::shared_ptr<View> makeSwitch(::UIView* view);
std::shared_ptr<View> makeTableViewCell(::UIView* view);
std::shared_ptr<View> makeTextField(::UIView* view);
std::shared_ptr<View> makeTextView(::UIView* view);
std::shared_ptr<View> makeWebBrowserView(::UIView* view);
std::shared_ptr<View> makeWebView(::UIView* view);
std::shared_ptr<View> makeWKWebView(::UIView* view);

}  // namespace tarni::ios
