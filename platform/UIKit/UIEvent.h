// Touches and the events that carry them, with the private setters that synthesis needs. Main
// thread.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/IOKit/IOHIDEvent.h"
#include "platform/QuartzCore/CGGeometry.h"
#include "platform/UIKit/UIView.h"

namespace tarni::platform {

enum class UITouchPhase { Began = 0, Moved = 1, Stationary = 2, Ended = 3, Cancelled = 4 };

enum class UIEventType { Touches = 0, Motion = 1, RemoteControl = 2, Presses = 3, Scroll = 10 };

class UITouch {
 public:
  virtual ~UITouch() = default;

  virtual UITouchPhase phase() const = 0;
  // Null when the view has gone or the touch hit none.
  virtual UIViewRef view() const = 0;
  virtual UIWindowRef window() const = 0;
  // In the coordinates of `view`; null gives window coordinates.
  virtual CGPoint locationInView(const UIViewRef& view) const = 0;
  virtual double timestamp() const = 0;
  virtual long tapCount() const = 0;

  virtual void setWindow(const UIWindowRef& window) = 0;
  virtual void setTapCount(long count) = 0;
  virtual void _setLocationInWindow(CGPoint point, bool resetPrevious) = 0;
  virtual void setView(const UIViewRef& view) = 0;
  virtual void setPhase(UITouchPhase phase) = 0;
  virtual void _setIsFirstTouchForView(bool first) = 0;
  virtual void setIsTap(bool tap) = 0;
  virtual void setTimestamp(double timestamp) = 0;
  virtual bool respondsToSetGestureView() const = 0;
  virtual void setGestureView(const UIViewRef& view) = 0;
  virtual void _setHidEvent(const IOHIDEventRef& event) = 0;
};
using UITouchRef = std::shared_ptr<UITouch>;

// The old private event record, field by field at the offsets at which the platform reads it from
// an object whose class pointer fills the first eight bytes.
struct GSEventRecord {
  const void* isa = nullptr;
  std::uint32_t flags = 0;
  std::uint32_t type = 0;
  std::uint32_t ignored1 = 0;
  float x1 = 0, y1 = 0;
  float x2 = 0, y2 = 0;
  std::uint32_t ignored2[10] = {};
  std::uint32_t ignored3[7] = {};
  float sizeX = 0, sizeY = 0;
  float x3 = 0, y3 = 0;
  std::uint32_t ignored4[3] = {};
};

class UIEvent {
 public:
  virtual ~UIEvent() = default;
  virtual UIEventType type() const = 0;
  // In the order in which they were added.
  virtual const std::vector<UITouchRef>& allTouches() const = 0;
  // One line for the log.
  virtual std::string description() const = 0;

  virtual void _clearTouches() = 0;
  virtual void _addTouch(const UITouchRef& touch, bool forDelayedDelivery) = 0;
  virtual void _setHIDEvent(const IOHIDEventRef& event) = 0;
  virtual void _setGSEvent(const GSEventRecord& event) = 0;
  virtual void _setTimestamp(double timestamp) = 0;
};

}  // namespace tarni::platform
