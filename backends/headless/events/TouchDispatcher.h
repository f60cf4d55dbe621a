// TouchDispatcher: what a UIApplication does with an event: it gives the touches to the gesture
// recognizers and to the views that they began on. Main thread.
#pragma once

#include <memory>
#include <vector>

#include "backends/headless/events/GestureRecognizer.h"
#include "platform/UIKit/UIEvent.h"

namespace tarni::headless {

class TouchDispatcher {
 public:
  // The application may run event loops of its own meanwhile, and dispatch other events in them.
  void dispatch(const platform::UIEvent& event);

 private:
  using Recognizers = std::vector<std::shared_ptr<GestureRecognizer>>;

  // A finger that is down. The touch is its sender's: one that goes away without having ended is
  // forgotten.
  struct Finger {
    std::weak_ptr<platform::UITouch> touch;
    Recognizers recognizers;  // those of the deepest view first
    bool cancelled = false;   // for the view
  };
  using FingerRef = std::shared_ptr<Finger>;

  void forgetVanishedFingers();
  FingerRef fingerOf(const platform::UITouchRef& touch) const;
  FingerRef fingerDown(const platform::UITouchRef& touch);
  void giveToRecognizers(const std::vector<platform::UITouchRef>& touches);
  void recognized(GestureRecognizer& winner, const std::vector<platform::UITouchRef>& touches);
  static void giveToView(platform::UITouchPhase phase, platform::UITouch& touch);

  std::vector<FingerRef> fingers_;
};

}  // namespace tarni::headless
