#include "agent/session/input/Acting.h"

#include <algorithm>
#include <cmath>

#include "agent/interaction/UIView_KIFAdditions.h"
#include "agent/session/screen/Description.h"
#include "agent/session/screen/Pages.h"
#include "agent/session/screen/Survey.h"
#include "platform/Platform.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::session {

using platform::CGPoint;
using platform::CGRect;
using platform::Task;
using platform::UIViewRef;

namespace {

// What is in sight of the view, in its window's coordinates; of size zero for nothing.
CGRect inSight(const UIViewRef& view) {
  const platform::UIWindowRef window = view->window();
  CGRect rect = placeOf(view).rect;
  for (UIViewRef outer = view->superview(); outer; outer = outer->superview()) {
    if (!outer->clipsToBounds() && outer != window) continue;
    rect = platform::CGRectIntersection(rect, placeOf(outer).rect);
  }
  return rect;
}

// How far a view from `low` to `high` is outside of what is seen, which begins at 0.
double offset(double low, double high, double extent) {
  if (low < 0) return low;
  if (high > extent) return std::min(high - extent, low);
  return 0;
}

// Who takes a press that is meant for the view; null when it has gone.
UIViewRef takerFor(UIViewRef view) {
  while (view && view->isDrawnBySuperview()) view = view->superview();
  return view;
}

// In the window's coordinates; null where something that is not part of it takes the press.
std::optional<CGPoint> pressAt(const UIViewRef& view, CGPoint place) {
  const CGRect bounds = view->bounds();
  const CGPoint point =
      view->convertPointToWindow({bounds.minX() + place.x, bounds.minY() + place.y});
  UIViewRef taker = view->window()->hitTest(point);
  const UIViewRef meant = takerFor(view);
  while (taker && taker != meant) taker = taker->superview();
  return taker ? std::optional(point) : std::nullopt;
}

std::string titlesOf(const std::vector<platform::UIWindowRef>& windows) {
  std::string titles;
  for (const platform::UIWindowRef& window : windows) {
    titles += (titles.empty() ? "\"" : ", \"") + titleOfWindow(window).value_or("") + "\"";
  }
  return titles;
}

}  // namespace

Task<void> turnToWindowOf(UIViewRef view) {
  platform::UIApplication& application = *platform::current().application;
  platform::UIWindowRef window = view->window();
  if (window == application.keyWindow()) co_return;
  const auto reached = application.windowsThatTakeInput();
  if (std::ranges::find(reached, window) == reached.end()) {
    throw SessionError(
        errors::kNotInteractable,
        "the element is in a window that takes no input while others do: " + titlesOf(reached));
  }
  co_await application.makeKeyWindow(window);
}

void requireEnabled(const UIViewRef& view) {
  if (view->isUserInteractionEnabled()) return;
  throw SessionError(errors::kNotInteractable, "the element is disabled");
}

UIViewRef webViewOf(const PageElement& element) {
  UIViewRef view = element.webView.lock();
  if (view && view->window()) return view;
  throw SessionError(errors::kStaleElement, "the element's page has gone");
}

Task<void> giveFocus(Handle element) {
  const PageElement* const found = Elements::sharedInstance().pageElementOf(element);
  const std::optional<PageElement> inPage = found ? std::optional(*found) : std::nullopt;
  UIViewRef view = inPage ? webViewOf(*inPage) : Elements::sharedInstance().viewOf(element);
  const platform::UIViewWeakRef weak = view;
  co_await turnToWindowOf(view);
  view = weak.lock();
  if (!view) throw SessionError(errors::kStaleElement, "the element has gone");
  // It would leave the focus where it is, and what is typed would go there.
  if (!inPage) requireEnabled(view);
  co_await view->becomeFirstResponder();
  if (inPage) co_await focusIn(*inPage);
}

Task<void> bringIntoView(UIViewRef view) {
  for (UIViewRef outer = view->superview(); outer; outer = outer->superview()) {
    const auto scroll = platform::as<platform::UIScrollView>(outer);
    if (!scroll) continue;
    const CGRect rect = platform::convertRect(view->bounds(), view, outer);
    const CGRect seen = outer->bounds();
    const CGPoint shift{
        offset(rect.minX() - seen.minX(), rect.maxX() - seen.minX(), seen.size.width),
        offset(rect.minY() - seen.minY(), rect.maxY() - seen.minY(), seen.size.height)};
    if (shift == CGPoint{}) continue;
    const CGPoint before = scroll->contentOffset();
    co_await scroll->setContentOffset({before.x + shift.x, before.y + shift.y}, false);
  }
}

CGPoint pressablePoint(const UIViewRef& view) {
  const CGRect rect = inSight(view);
  if (!placeOf(view).isVisible || rect.size.width <= 0 || rect.size.height <= 0) {
    throw SessionError(errors::kNotInteractable, "nothing of the element is in sight");
  }
  const platform::UIWindowRef window = view->window();
  const UIViewRef meant = takerFor(view);
  const CGRect own = platform::convertRect(rect, window, meant);
  const CGPoint point = KIFAdditions::tappablePointInRect(meant, own);
  if (std::isnan(point.x)) {
    const UIViewRef taker = window->hitTest({rect.midX(), rect.midY()});
    throw SessionError(errors::kClickIntercepted,
                       taker ? "element " +
                                   std::to_string(Elements::sharedInstance().handleOf(taker)) +
                                   " (" + taker->getClass()->name() + ") takes the press instead"
                             : "the element takes no press");
  }
  return platform::convertPoint(point, meant, window);
}

Task<CGPoint> readyToPress(Handle element, std::optional<CGPoint> place) {
  UIViewRef view = Elements::sharedInstance().viewOf(element);
  co_await turnToWindowOf(view);
  view = Elements::sharedInstance().viewOf(element);
  co_await bringIntoView(view);
  view = Elements::sharedInstance().viewOf(element);
  const auto there = place ? pressAt(view, *place) : std::nullopt;
  co_return there ? *there : pressablePoint(view);
}

Task<CGPoint> readyToPress(PageElement element, std::optional<CGPoint> place) {
  UIViewRef view = webViewOf(element);
  const auto page = platform::as<platform::UIWebView>(view);
  if (!page || !page->passesPresses()) {
    throw SessionError(errors::kUnsupported,
                       "presses do not reach the pages of this platform, which take a plain click");
  }
  co_await turnToWindowOf(view);
  view = webViewOf(element);
  co_await bringIntoView(view);
  const CGPoint inPage = co_await pressPointIn(element, place);
  const auto there = pressAt(webViewOf(element), inPage);
  if (there) co_return *there;
  throw SessionError(errors::kClickIntercepted, "something over the page takes the press instead");
}

}  // namespace tarni::session
