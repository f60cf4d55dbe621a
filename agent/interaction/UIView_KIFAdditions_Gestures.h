// UIView(KIFAdditions), the gestures: sequences of touch events as a finger would make them, handed
// to the application's ordinary event entry. Main thread.
//
// Playback taps and drags; the other gestures are kept for callers from outside.
//
// Points are in the view's coordinates, durations in seconds. A gesture ends once the application
// was given its last event. It reports no failure: in a view that has gone it touches nothing.
#pragma once

#include <vector>

#include "platform/Task.h"
#include "platform/UIKit/UIApplication.h"
#include "platform/UIKit/UIEvent.h"
#include "platform/UIKit/UIView.h"

namespace tarni::KIFAdditions {

using Path = std::vector<platform::CGPoint>;

// The application's one touches event, refilled with the touches as they are now. Null touches are
// left out.
platform::UIEvent& eventWithTouches(std::vector<platform::UITouchRef> touches);
platform::UIEvent& eventWithTouch(const platform::UITouchRef& touch);

// In the middle of the view's frame size.
platform::Task<void> tap(platform::UIViewRef view);
// A view inside a web view takes the tap by itself; any other is touched, and becomes first
// responder when it can.
platform::Task<void> tapAtPoint(platform::UIViewRef view, platform::CGPoint point);
// The same without the first responder in mind.
platform::Task<void> FaketapAtPoint(platform::UIViewRef view, platform::CGPoint point);
// Taps the web view's inner view, found through its instance variables.
platform::Task<void> tapWebViewAtPoint(platform::UIViewRef view, platform::CGPoint point);
platform::Task<void> twoFingerTapAtPoint(platform::UIViewRef view, platform::CGPoint point);
platform::Task<void> longPressAtPoint(platform::UIViewRef view, platform::CGPoint point,
                                      double duration);

// `steps` points from `start` to `end`, both included. One step gives a point that is not a number.
Path pointsFromStartPoint(platform::CGPoint start, platform::CGPoint end, std::size_t steps);

platform::Task<void> dragFromPoint(platform::UIViewRef view, platform::CGPoint start,
                                   platform::CGPoint end);
platform::Task<void> dragFromPoint(platform::UIViewRef view, platform::CGPoint start,
                                   platform::CGPoint end, std::size_t steps);
platform::Task<void> dragFromPointDisplacement(platform::UIViewRef view, platform::CGPoint start,
                                               platform::CGPoint displacement, std::size_t steps);
platform::Task<void> dragAlongPathWithPoints(platform::UIViewRef view, Path points);
// One finger a path. Without paths, with an empty one, or with paths of different lengths it does
// nothing. A path of one point leaves the finger down.
platform::Task<void> dragPointsAlongPaths(platform::UIViewRef view, std::vector<Path> paths);

platform::Task<void> twoFingerPanFromPoint(platform::UIViewRef view, platform::CGPoint start,
                                           platform::CGPoint end, std::size_t steps);
// The fingers close, or open, horizontally by `distance` each.
platform::Task<void> pinchAtPoint(platform::UIViewRef view, platform::CGPoint center,
                                  double distance, std::size_t steps);
platform::Task<void> zoomAtPoint(platform::UIViewRef view, platform::CGPoint center,
                                 double distance, std::size_t steps);
// The angle is in degrees, clockwise on screen.
platform::Task<void> twoFingerRotateAtPoint(platform::UIViewRef view, platform::CGPoint center,
                                            double angle);

}  // namespace tarni::KIFAdditions
