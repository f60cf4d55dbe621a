#include "agent/interaction/UITouch_KIFAdditions.h"

#include "agent/core/state/MainThread.h"
#include "agent/interaction/UIEvent_KIFAdditions.h"
#include "platform/Platform.h"

namespace tarni::KIFAdditions {
namespace {

bool isOperatingSystemAtLeastVersion9() {
  const platform::NSProcessInfo& process = *platform::current().processInfo;
  return process.respondsToIsOperatingSystemAtLeastVersion() &&
         process.isOperatingSystemAtLeastVersion({9, 0, 0});
}

}  // namespace

platform::UITouchRef initAtPointInWindow(platform::CGPoint point,
                                         const platform::UIWindowRef& window) {
  assertMainThread();
  platform::UITouchRef touch = platform::current().application->makeTouch();
  if (!touch) return nullptr;
  touch->setWindow(window);
  touch->setTapCount(1);
  touch->_setLocationInWindow(point, true);
  const platform::UIViewRef hitView = window ? window->hitTest(point) : nullptr;
  touch->setView(hitView);
  touch->setPhase(platform::UITouchPhase::Began);
  touch->_setIsFirstTouchForView(true);
  touch->setIsTap(true);
  touch->setTimestamp(platform::current().processInfo->systemUptime());
  if (touch->respondsToSetGestureView()) touch->setGestureView(hitView);
  if (isOperatingSystemAtLeastVersion9()) kif_setHidEvent(touch);
  return touch;
}

platform::UITouchRef initAtPointInView(platform::CGPoint point, const platform::UIViewRef& view) {
  const platform::UIWindowRef window = view->window();
  return initAtPointInWindow(platform::convertPoint(point, view, window), window);
}

platform::UITouchRef initInView(const platform::UIViewRef& view) {
  const platform::CGSize size = view->frame().size;
  return initAtPointInView({size.width / 2, size.height / 2}, view);
}

void setLocationInWindow(const platform::UITouchRef& touch, platform::CGPoint point) {
  if (!touch) return;
  touch->setTimestamp(platform::current().processInfo->systemUptime());
  touch->_setLocationInWindow(point, false);
}

void setPhaseAndUpdateTimestamp(const platform::UITouchRef& touch, platform::UITouchPhase phase) {
  if (!touch) return;
  touch->setTimestamp(platform::current().processInfo->systemUptime());
  touch->setPhase(phase);
}

void kif_setHidEvent(const platform::UITouchRef& touch) {
  touch->_setHidEvent(kif_IOHIDEventWithTouches({&touch, 1}));
}

}  // namespace tarni::KIFAdditions
