// Touch: a UITouch, one of a finger's or one that the agent makes. The private setters are asked
// for before they are sent: a system without one gets a touch that lacks that much. Main thread.
#pragma once

#include "backends/ios/Apple.h"
#include "backends/ios/guard/Owned.h"
#include "platform/UIKit/UIEvent.h"

namespace tarni::ios {

class Touch : public platform::UITouch {
 public:
  // The touch of an object, the same one for as long as somebody holds it; null for nil.
  static std::shared_ptr<Touch> of(::UITouch* touch);

  Touch(::UITouch* touch, unsigned long number) : touch_(touch), number_(number) {}

  ::UITouch* native() const { return touch_.get(); }
  // Stays with the object; one that is first seen later has a higher one.
  unsigned long number() const { return number_; }

  platform::UITouchPhase phase() const override;
  platform::UIViewRef view() const override;
  platform::UIWindowRef window() const override;
  platform::CGPoint locationInView(const platform::UIViewRef& view) const override;
  double timestamp() const override;
  long tapCount() const override;

  void setWindow(const platform::UIWindowRef& window) override;
  void setTapCount(long count) override;
  void _setLocationInWindow(platform::CGPoint point, bool resetPrevious) override;
  void setView(const platform::UIViewRef& view) override;
  void setPhase(platform::UITouchPhase phase) override;
  void _setIsFirstTouchForView(bool first) override;
  void setIsTap(bool tap) override;
  void setTimestamp(double timestamp) override;
  bool respondsToSetGestureView() const override;
  void setGestureView(const platform::UIViewRef& view) override;
  void _setHidEvent(const platform::IOHIDEventRef& event) override;

 private:
  Owned<::UITouch*> touch_;
  unsigned long number_;
};

}  // namespace tarni::ios
