#include "agent/elements/WebViews.h"

#include "platform/UIKit/Classes.h"

namespace tarni {

namespace uikit = platform::uikit;
using platform::UIViewRef;

bool isWebView(const UIViewRef& view) {
  return view->isKindOfClass(uikit::UIWebView) || view->isKindOfClass(uikit::WKWebView);
}

// The newer class has views of many names inside: all of the page stand in one of them, and what
// else an application has put there is its own.
bool isInWebView(const UIViewRef& view) {
  if (view->getClass()->lowercaseName().find("uiweb") != std::string::npos) return true;
  if (view->isKindOfClass(uikit::WKWebView)) return true;
  const platform::Class pageView = platform::NSClassFromString("WKContentView");
  for (UIViewRef above = view; above; above = above->superview()) {
    if (above->isKindOfClass(pageView)) return true;
  }
  const UIViewRef superview = view->superview();
  return superview && superview->isKindOfClass(uikit::WKWebView) &&
         view->isKindOfClass(uikit::UIScrollView);
}

}  // namespace tarni
