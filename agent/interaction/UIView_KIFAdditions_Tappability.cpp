#include "agent/interaction/UIView_KIFAdditions_Tappability.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"

namespace tarni::KIFAdditions {
namespace {

using platform::CGPoint;
using platform::CGRect;
using platform::UIViewRef;
namespace uikit = platform::uikit;

bool isKindOfClassNamed(const UIViewRef& view, std::string_view name) {
  return view->isKindOfClass(platform::NSClassFromString(name));
}

std::array<CGPoint, 5> samplePoints(const CGRect& rect) {
  return {{{rect.midX(), rect.midY()},
           {rect.minX() + 1, rect.minY() + 1},
           {rect.maxX() - 1, rect.minY() + 1},
           {rect.minX() + 1, rect.maxY() - 1},
           {rect.maxX() - 1, rect.maxY() - 1}}};
}

template <typename Test>
UIViewRef nearestAncestor(const UIViewRef& view, Test test) {
  for (UIViewRef current = view->superview(); current; current = current->superview()) {
    if (test(current)) return current;
  }
  return nullptr;
}

bool isEnabled(const UIViewRef& view) {
  return view && view->isUserInteractionEnabled();
}

}  // namespace

bool isTappableWithHitTestResultView(const UIViewRef& view, const UIViewRef& hitView,
                                     const DescendsFrom& descendsFrom) {
  if (!hitView) return false;
  if (hitView->isKindOfClass(uikit::UIControl) && descendsFrom(view, hitView)) return true;
  if (hitView->isKindOfClass(uikit::UINavigationBar) && isNavigationItemView(view) &&
      descendsFrom(view, hitView)) {
    return true;
  }
  return descendsFrom(hitView, view);
}

CGPoint tappablePointInRect(const UIViewRef& view, const CGRect& rect,
                            const DescendsFrom& descendsFrom) {
  const platform::UIWindowRef window = view->window();
  if (!window) return platform::kNowhere;
  for (const CGPoint point : samplePoints(platform::convertRect(rect, view, window))) {
    if (isTappableWithHitTestResultView(view, window->hitTest(point), descendsFrom)) {
      return platform::convertPoint(point, window, view);
    }
  }
  return platform::kNowhere;
}

bool isTappableInRect(const UIViewRef& view, const CGRect& rect, const DescendsFrom& descendsFrom) {
  return !std::isnan(tappablePointInRect(view, rect, descendsFrom).x);
}

bool isTappable(const UIViewRef& view, const DescendsFrom& descendsFrom) {
  return hasTapGestureRecognizer(view) || isTappableInRect(view, view->bounds(), descendsFrom);
}

bool isProbablyTappable(const UIViewRef& view, const DescendsFrom& descendsFrom) {
  return view->getClass()->name() == "UIWebBrowserView" || isTappable(view, descendsFrom);
}

bool isTappable_AI(const UIViewRef& view) {
  return hasTapGestureRecognizer(view);
}

bool hasTapGestureRecognizer(const UIViewRef& view) {
  return std::ranges::any_of(view->gestureRecognizers(), [](platform::Class recognizer) {
    return recognizer->isSubclassOf(uikit::UITapGestureRecognizer);
  });
}

bool isNavigationItemView(const UIViewRef& view) {
  return isKindOfClassNamed(view, "UINavigationItemView") ||
         isKindOfClassNamed(view, "_UINavigationBarBackIndicatorView");
}

bool isUserInteractionActuallyEnabled(const UIViewRef& view) {
  if (view->isUserInteractionEnabled()) return true;
  // The parts of a bar take a tap when the bar does.
  if (isNavigationItemView(view) && isEnabled(nearestAncestor(view, [](const UIViewRef& ancestor) {
        return ancestor->isKindOfClass(uikit::UINavigationBar);
      }))) {
    return true;
  }
  if (isKindOfClassNamed(view, "UIButtonLabel") &&
      isEnabled(nearestAncestor(view, [](const UIViewRef& ancestor) {
        return isKindOfClassNamed(ancestor, "UINavigationButton");
      }))) {
    return true;
  }
  // A part of a control takes it when a control round it does, without a gap.
  for (UIViewRef control = view->superview(); control && control->isKindOfClass(uikit::UIControl);
       control = control->superview()) {
    if (control->isUserInteractionEnabled()) return true;
  }
  return false;
}

platform::UIWindowRef windowOrIdentityWindow(const UIViewRef& view) {
  platform::UIWindowRef own = view->window();
  if (own && own->transform().isIdentity()) return own;
  for (const platform::UIWindowRef& window :
       platform::current().application->windowsWithKeyWindow()) {
    if (window->transform().isIdentity()) return window;
  }
  return nullptr;
}

}  // namespace tarni::KIFAdditions
