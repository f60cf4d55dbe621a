// Which views show pages. Main thread.
#pragma once

#include "platform/UIKit/UIView.h"

namespace tarni {

// A view that a page is shown in: of the class UIWebView, or of WKWebView, which followed it.
bool isWebView(const platform::UIViewRef& view);

// Whether the view is such a one or stands for what is in one, where steps are the page's to tell.
bool isInWebView(const platform::UIViewRef& view);

}  // namespace tarni
