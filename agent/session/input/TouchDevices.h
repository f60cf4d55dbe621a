// TouchDevices: what a client has in place of a mouse and a keyboard on a platform of fingers. The
// left button is a finger on the screen, and keys go to the view that has the focus as those of the
// keyboard on the screen do. Throws SessionError (unsupported operation) for what there is none of:
// other buttons, a wheel, keys that such a keyboard has not. Main thread.
#pragma once

#include <set>
#include <string>

#include "agent/session/input/Fingers.h"
#include "platform/UIKit/InputDevices.h"

namespace tarni::session {

class TouchDevices final : public platform::InputDevices {
 public:
  explicit TouchDevices(Fingers& fingers) : fingers_(fingers) {}

  // While no finger is down nothing of the application's hears of it.
  platform::Task<void> movePointer(platform::UIWindowRef window, platform::CGPoint point) override;
  platform::Task<void> setButton(platform::PointerButton button, bool isDown) override;
  platform::Task<void> turnWheel(double right, double down) override;
  // Characters, "Backspace", "Enter"; modifiers, of which "Shift" counts and "Control+a" (or with
  // "Meta") selects all.
  platform::Task<void> setKey(std::string key, bool isDown) override;
  platform::Task<void> commitText(std::string text) override;

 private:
  Fingers& fingers_;
  Fingers::Spot spot_;
  bool isFingerDown_ = false;
  std::set<std::string> modifiers_;
};

}  // namespace tarni::session
