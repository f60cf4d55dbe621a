#include "agent/recording/TouchedView.h"

#include <algorithm>

#include "platform/UIKit/Classes.h"

namespace tarni {

namespace uikit = platform::uikit;
using platform::CGPoint;
using platform::UIViewRef;

namespace {

bool isStrictlyInside(const UIViewRef& candidate, const UIViewRef& touched, CGPoint point) {
  const CGPoint center =
      platform::convertPoint(candidate->center(), candidate->superview(), touched);
  const platform::CGSize size = candidate->bounds().size;
  return point.x > center.x - size.width / 2 && point.x < center.x + size.width / 2 &&
         point.y > center.y - size.height / 2 && point.y < center.y + size.height / 2;
}

}  // namespace

bool takesTouchesWhole(const UIViewRef& view) {
  return view->isKindOfClass(uikit::UIButton) || view->isKindOfClass(uikit::UITextField) ||
         view->isKindOfClass(uikit::UISwitch);
}

UIViewRef foremostAt(const std::vector<UIViewRef>& listed, const UIViewRef& touched,
                     CGPoint point) {
  const auto last = std::find_if(listed.rbegin(), listed.rend(), [&](const UIViewRef& candidate) {
    return isStrictlyInside(candidate, touched, point);
  });
  return last == listed.rend() ? nullptr : *last;
}

}  // namespace tarni
