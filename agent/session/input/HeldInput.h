// HeldInput: the buttons, keys and fingers that a client has down, so that none stays down when the
// client goes. Main thread.
#pragma once

#include <set>
#include <string>

#include "agent/session/input/Fingers.h"
#include "platform/Task.h"
#include "platform/UIKit/InputDevices.h"

namespace tarni::session {

// The platform's devices. Throws SessionError (unsupported operation) where it has none.
platform::InputDevices& inputDevices();
// The same in a person's hands, where the platform tells these apart.
platform::InputDevices& personsDevices();

class HeldInput {
 public:
  platform::Task<void> setButton(platform::PointerButton button, bool isDown,
                                 platform::InputDevices& devices = inputDevices());
  platform::Task<void> setKey(std::string key, bool isDown,
                              platform::InputDevices& devices = inputDevices());
  Fingers& fingers() { return fingers_; }
  // Lets go of all of them. Never throws.
  platform::Task<void> releaseAll();

 private:
  std::set<platform::PointerButton> buttons_;
  std::set<std::string> keys_;
  Fingers fingers_;
};

}  // namespace tarni::session
