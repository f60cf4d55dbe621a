#include "agent/interaction/UIView_KIFAdditions_Gestures.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "agent/core/state/MainThread.h"
#include "agent/interaction/UIApplication_KIFAdditions_RunLoop.h"
#include "agent/interaction/UIEvent_KIFAdditions.h"
#include "agent/interaction/UITouch_KIFAdditions.h"
#include "platform/ObjectiveC/Runtime.h"
#include "platform/Platform.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::KIFAdditions {
namespace {

using platform::CGPoint;
using platform::Task;
using platform::UITouchPhase;
using platform::UITouchRef;
using platform::UIViewRef;

constexpr double kStepInterval = 0.01;        // seconds between the events of a gesture
constexpr double kModeInterval = 0.1;         // seconds between looks at the run-loop mode
constexpr double kTwoFingerConstant = 40;     // half the distance between two fingers, per axis
constexpr double kRotationRadius = 80;        // points
constexpr std::size_t kDefaultDragSteps = 3;  // points of a drag that names no number

constexpr double KIFDegreesToRadians(double degrees) {
  return degrees * std::numbers::pi / 180;
}

constexpr CGPoint offset(CGPoint point, double x, double y) {
  return {point.x + x, point.y + y};
}

Task<void> send(platform::UIEvent& event) {
  co_await platform::current().application->sendEvent(event);
}

Task<void> wait(std::string mode, double seconds) {
  co_await platform::current().application->runLoopRunInMode(std::move(mode), seconds, false);
}

// A mode stack that was emptied counts as the default mode, so that nothing waits for ever.
std::string currentMode() {
  return currentRunLoopMode().value_or(platform::kCFRunLoopDefaultMode);
}

Task<void> becomeFirstResponderIfPossible(UIViewRef view) {
  if (view->canBecomeFirstResponder()) co_await view->becomeFirstResponder();
}

UIViewRef webBrowserView(const UIViewRef& view) {
  const std::string& className = view->getClass()->name();
  if (className == "UIWebBrowserView") return view;
  if (className != "UIWebView") return nullptr;
  const UIViewRef internal = view->valueForKey("_internal");
  return internal ? internal->valueForKey("browserView") : nullptr;
}

platform::UIWebBrowserView& webBrowserOf(const UIViewRef& browserView) {
  const auto browser = platform::as<platform::UIWebBrowserView>(browserView);
  if (!browser) {
    throw platform::unrecognizedSelector(browserView->getClass(), "tapInteractionWithLocation:");
  }
  return *browser;
}

UIViewRef hitView(const UITouchRef& touch) {
  return touch ? touch->view() : nullptr;
}

// Began and Ended in one event object, which still describes the first when it is sent again.
Task<void> sendBeganAndEnded(std::vector<UITouchRef> touches) {
  platform::UIEvent& event = eventWithTouches(touches);
  co_await send(event);
  for (const UITouchRef& touch : touches) {
    setPhaseAndUpdateTimestamp(touch, UITouchPhase::Ended);
  }
  co_await send(event);
}

// The touch of a tap, over by now; null in a web view, which takes taps by itself.
Task<UITouchRef> touchAtPoint(UIViewRef view, CGPoint point) {
  if (const UIViewRef browserView = webBrowserView(view)) {
    co_await webBrowserOf(browserView).tapInteractionWithLocation(point);
    co_return nullptr;
  }
  const UITouchRef touch = initAtPointInView(point, view);
  const std::vector<UITouchRef> touches(1, touch);
  co_await sendBeganAndEnded(touches);
  co_return touch;
}

bool isDraggable(const std::vector<Path>& paths) {
  return !paths.empty() && !paths.front().empty() &&
         std::ranges::all_of(paths,
                             [&](const Path& path) { return path.size() == paths.front().size(); });
}

std::vector<Path> inWindowCoordinates(std::vector<Path> paths, const UIViewRef& view) {
  const platform::UIWindowRef window = view->window();
  for (Path& path : paths) {
    for (CGPoint& point : path) point = platform::convertPoint(point, view, window);
  }
  return paths;
}

std::vector<UITouchRef> touchesAtStart(const std::vector<Path>& windowPaths,
                                       const UIViewRef& view) {
  std::vector<UITouchRef> touches;
  for (const Path& path : windowPaths) {
    const CGPoint inView = platform::convertPoint(path.front(), view->window(), view);
    touches.push_back(initAtPointInView(inView, view));
  }
  return touches;
}

Task<void> sendMoved(std::vector<UITouchRef> touches, std::vector<Path> windowPaths,
                     std::size_t step) {
  for (std::size_t finger = 0; finger < touches.size(); ++finger) {
    setLocationInWindow(touches[finger], windowPaths[finger][step]);
    setPhaseAndUpdateTimestamp(touches[finger], UITouchPhase::Moved);
  }
  co_await send(eventWithTouches(touches));
  co_await wait(currentMode(), kStepInterval);
}

// One to the left of the center and one to the right, from one distance to the other.
std::vector<Path> twoPathsBeside(CGPoint center, double from, double to, std::size_t steps) {
  return {pointsFromStartPoint(offset(center, -from, 0), offset(center, -to, 0), steps),
          pointsFromStartPoint(offset(center, from, 0), offset(center, to, 0), steps)};
}

// Each finger lifts in an event of its own.
Task<void> sendEnded(std::vector<UITouchRef> touches) {
  for (const UITouchRef& touch : touches) {
    setPhaseAndUpdateTimestamp(touch, UITouchPhase::Ended);
    co_await send(eventWithTouch(touch));
  }
}

}  // namespace

platform::UIEvent& eventWithTouches(std::vector<UITouchRef> touches) {
  assertMainThread();
  std::erase(touches, nullptr);
  platform::UIEvent& event = platform::current().application->_touchesEvent();
  event._clearTouches();
  kif_setEventWithTouches(event, touches);
  for (const UITouchRef& touch : touches) event._addTouch(touch, false);
  return event;
}

platform::UIEvent& eventWithTouch(const UITouchRef& touch) {
  return eventWithTouches({touch});
}

Task<void> tap(UIViewRef view) {
  const platform::CGSize size = view->frame().size;
  const CGPoint middle{size.width / 2, size.height / 2};
  co_await tapAtPoint(view, middle);
}

Task<void> tapAtPoint(UIViewRef view, CGPoint point) {
  const UITouchRef touch = co_await touchAtPoint(view, point);
  if (platform::isDescendantOfView(hitView(touch), view)) {
    co_await becomeFirstResponderIfPossible(view);
  }
}

Task<void> FaketapAtPoint(UIViewRef view, CGPoint point) {
  co_await touchAtPoint(view, point);
}

Task<void> tapWebViewAtPoint(UIViewRef view, CGPoint point) {
  const UIViewRef internal = view->instanceVariable("_internal");
  const UIViewRef browserView = internal ? internal->instanceVariable("browserView") : nullptr;
  if (browserView) co_await webBrowserOf(browserView).performTapInteractionWithLocation(point);
}

Task<void> twoFingerTapAtPoint(UIViewRef view, CGPoint point) {
  const std::vector<UITouchRef> touches{
      initAtPointInView(offset(point, -kTwoFingerConstant, -kTwoFingerConstant), view),
      initAtPointInView(offset(point, kTwoFingerConstant, kTwoFingerConstant), view)};
  co_await sendBeganAndEnded(touches);
}

Task<void> longPressAtPoint(UIViewRef view, CGPoint point, double duration) {
  const UITouchRef touch = initAtPointInView(point, view);
  co_await send(eventWithTouch(touch));
  co_await wait(platform::kCFRunLoopDefaultMode, kStepInterval);
  for (double elapsed = kStepInterval; elapsed < duration; elapsed += kStepInterval) {
    setPhaseAndUpdateTimestamp(touch, UITouchPhase::Stationary);
    co_await send(eventWithTouch(touch));
    co_await wait(platform::kCFRunLoopDefaultMode, kStepInterval);
  }
  setPhaseAndUpdateTimestamp(touch, UITouchPhase::Ended);
  co_await send(eventWithTouch(touch));
  if (platform::isDescendantOfView(hitView(touch), view)) {
    co_await becomeFirstResponderIfPossible(view);
  }
}

Path pointsFromStartPoint(CGPoint start, CGPoint end, std::size_t steps) {
  Path points;
  const double last = static_cast<double>(steps) - 1;
  for (std::size_t i = 0; i < steps; ++i) {
    const double progress = static_cast<double>(i) / last;
    points.push_back(
        {start.x + (end.x - start.x) * progress, start.y + (end.y - start.y) * progress});
  }
  return points;
}

Task<void> dragFromPoint(UIViewRef view, CGPoint start, CGPoint end) {
  co_await dragFromPoint(view, start, end, kDefaultDragSteps);
}

Task<void> dragFromPoint(UIViewRef view, CGPoint start, CGPoint end, std::size_t steps) {
  const CGPoint displacement{end.x - start.x, end.y - start.y};
  co_await dragFromPointDisplacement(view, start, displacement, steps);
}

Task<void> dragFromPointDisplacement(UIViewRef view, CGPoint start, CGPoint displacement,
                                     std::size_t steps) {
  const CGPoint end = offset(start, displacement.x, displacement.y);
  const std::vector<Path> paths{pointsFromStartPoint(start, end, steps)};
  co_await dragPointsAlongPaths(view, paths);
}

Task<void> dragAlongPathWithPoints(UIViewRef view, Path points) {
  const std::vector<Path> paths{std::move(points)};
  co_await dragPointsAlongPaths(view, paths);
}

Task<void> dragPointsAlongPaths(UIViewRef view, std::vector<Path> paths) {
  if (!isDraggable(paths)) co_return;
  const std::size_t steps = paths.front().size();
  const std::vector<Path> windowPaths = inWindowCoordinates(std::move(paths), view);
  const std::vector<UITouchRef> touches = touchesAtStart(windowPaths, view);
  co_await send(eventWithTouches(touches));
  co_await wait(currentMode(), kStepInterval);
  // A path of one point has no further step: its finger stays down.
  for (std::size_t step = 1; step < steps; ++step) {
    co_await sendMoved(touches, windowPaths, step);
    if (step == steps - 1) co_await sendEnded(touches);
  }
  if (hitView(touches.front()) == view) co_await becomeFirstResponderIfPossible(view);
  // The application settles: what scrolls has a mode of its own.
  while (currentMode() != platform::kCFRunLoopDefaultMode) {
    co_await wait(currentMode(), kModeInterval);
  }
}

Task<void> twoFingerPanFromPoint(UIViewRef view, CGPoint start, CGPoint end, std::size_t steps) {
  constexpr double kHalf = kTwoFingerConstant;
  const std::vector<Path> paths{
      pointsFromStartPoint(offset(start, -kHalf, -kHalf), offset(end, -kHalf, -kHalf), steps),
      pointsFromStartPoint(offset(start, kHalf, kHalf), offset(end, kHalf, kHalf), steps)};
  co_await dragPointsAlongPaths(view, paths);
}

Task<void> pinchAtPoint(UIViewRef view, CGPoint center, double distance, std::size_t steps) {
  const double far = kTwoFingerConstant + distance;
  const std::vector<Path> paths = twoPathsBeside(center, far, kTwoFingerConstant, steps);
  co_await dragPointsAlongPaths(view, paths);
}

Task<void> zoomAtPoint(UIViewRef view, CGPoint center, double distance, std::size_t steps) {
  const double far = kTwoFingerConstant + distance;
  const std::vector<Path> paths = twoPathsBeside(center, kTwoFingerConstant, far, steps);
  co_await dragPointsAlongPaths(view, paths);
}

Task<void> twoFingerRotateAtPoint(UIViewRef view, CGPoint center, double angle) {
  const auto steps = static_cast<std::size_t>(std::max(std::abs(angle) / 2, 2.0));
  const double radians = KIFDegreesToRadians(angle);
  std::vector<Path> paths(2);
  for (std::size_t i = 0; i < steps; ++i) {
    const double progress =
        i == steps - 1 ? 1 : static_cast<double>(i) / static_cast<double>(steps);
    const double x = kRotationRadius * std::cos(radians * progress);
    const double y = kRotationRadius * std::sin(radians * progress);
    paths[0].push_back(offset(center, x, y));
    paths[1].push_back(offset(center, -x, -y));
  }
  co_await dragPointsAlongPaths(view, paths);
}

}  // namespace tarni::KIFAdditions
