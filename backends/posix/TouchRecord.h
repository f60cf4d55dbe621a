// TouchRecord: a touch that remembers whatever is set on it, for backends that dispatch touches
// themselves and for tests. Views are held weakly. Main thread.
#pragma once

#include "platform/UIKit/UIEvent.h"

namespace tarni::posix {

class TouchRecord : public platform::UITouch {
 public:
  platform::UITouchPhase phase() const override { return phase_; }
  platform::UIViewRef view() const override { return view_.lock(); }
  platform::UIWindowRef window() const override { return window_.lock(); }
  platform::CGPoint locationInView(const platform::UIViewRef& view) const override;
  double timestamp() const override { return timestamp_; }
  long tapCount() const override { return tapCount_; }

  void setWindow(const platform::UIWindowRef& window) override { window_ = window; }
  void setTapCount(long count) override { tapCount_ = count; }
  // `resetPrevious` also makes the point the previous location; otherwise that becomes the one
  // that was current before.
  void _setLocationInWindow(platform::CGPoint point, bool resetPrevious) override;
  void setView(const platform::UIViewRef& view) override { view_ = view; }
  void setPhase(platform::UITouchPhase phase) override { phase_ = phase; }
  void _setIsFirstTouchForView(bool first) override { isFirstTouchForView_ = first; }
  void setIsTap(bool tap) override { isTap_ = tap; }
  void setTimestamp(double timestamp) override { timestamp_ = timestamp; }
  bool respondsToSetGestureView() const override { return true; }
  void setGestureView(const platform::UIViewRef& view) override { gestureView_ = view; }
  void _setHidEvent(const platform::IOHIDEventRef& event) override { hidEvent_ = event; }

  platform::CGPoint locationInWindow() const { return location_; }
  platform::CGPoint previousLocationInWindow() const { return previousLocation_; }
  bool isFirstTouchForView() const { return isFirstTouchForView_; }
  bool isTap() const { return isTap_; }
  platform::UIViewRef gestureView() const { return gestureView_.lock(); }
  // A HIDEventRecord when HIDEventSystem made it; null when none was set.
  const platform::IOHIDEventRef& hidEvent() const { return hidEvent_; }

 private:
  bool isFirstTouchForView_ = false;
  bool isTap_ = false;
  platform::UITouchPhase phase_ = platform::UITouchPhase::Began;
  platform::UIViewWeakRef window_;
  platform::UIViewWeakRef view_;
  platform::UIViewWeakRef gestureView_;
  platform::CGPoint location_;
  platform::CGPoint previousLocation_;
  double timestamp_ = 0;
  long tapCount_ = 0;
  platform::IOHIDEventRef hidEvent_;
};

}  // namespace tarni::posix
