#include "agent/elements/WebViews.h"

#include "platform/UIKit/Classes.h"

namespace tarni {

namespace uikit = platform::uikit;
using platform::UIViewRef;

bool isWebView(const UIViewRef& view) {
  return view->isKindOfClass(uikit::UIWebView) || view->isKindOfClass(uikit::WKWebView);
}

// The newer class has views of many names inside.
bool isInWebView(const UIViewRef& view) {
  if (view->getClass()->lowercaseName().find("uiweb") != std::string::npos) return true;
  for (UIViewRef above = view; above; above = above->superview()) {
    if (above->isKindOfClass(uikit::WKWebView)) return true;
  }
  return false;
}

}  // namespace tarni
