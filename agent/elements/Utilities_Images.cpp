#include "agent/elements/Utilities_Images.h"

#include "agent/core/state/MainThread.h"
#include "platform/Platform.h"

namespace tarni::Utilities {

using platform::CGPoint;
using platform::CGRect;
using platform::Task;
using platform::UIImageRef;
using platform::UIViewRef;

namespace {

constexpr double kJpegQuality = 0.6;

// Reaches further to the right of the point than to its left, and as far down as up.
CGRect touchedArea(CGPoint point) {
  return {{point.x - 100, point.y - 100}, {300, 200}};
}

}  // namespace

Task<UIImageRef> getUIImageOfUIView(UIViewRef view) {
  assertMainThread();
  co_return co_await view->drawViewHierarchy();
}

Task<UIImageRef> getUIImageOfUIViewTouchedArea(UIViewRef view, CGPoint point) {
  const UIImageRef image = co_await getUIImageOfUIView(view);
  co_return image ? image->crop(touchedArea(point)) : nullptr;
}

Task<std::string> getBase64StringOfUIImageOfUIView(UIViewRef view) {
  const UIImageRef image = co_await getUIImageOfUIView(view);
  co_return getBase64StringOfUIImage(image);
}

Task<std::string> getBase64StringOfUIImageOfUIViewTouchedArea(UIViewRef view, CGPoint point) {
  const UIImageRef image = co_await getUIImageOfUIViewTouchedArea(view, point);
  co_return getBase64StringOfUIImage(image);
}

std::string getBase64StringOfUIImage(const UIImageRef& image) {
  if (!image) return {};
  return platform::current().encoding->base64EncodedString(image->JPEGRepresentation(kJpegQuality));
}

}  // namespace tarni::Utilities
