// HeldInput: the buttons, keys and fingers that a client has down, so that none stays down when the
// client goes. Main thread.
#pragma once

#include <set>
#include <string>

#include "agent/session/input/Fingers.h"
#include "agent/session/input/TouchDevices.h"
#include "platform/Task.h"
#include "platform/UIKit/InputDevices.h"

namespace tarni::session {

class HeldInput {
 public:
  HeldInput() = default;
  HeldInput(const HeldInput&) = delete;
  HeldInput& operator=(const HeldInput&) = delete;

  // The platform's mouse and keyboard, or what stands for them on one of fingers.
  platform::InputDevices& devices();
  // The same in a person's hands, where the platform tells these apart.
  platform::InputDevices& personsDevices();

  platform::Task<void> setButton(platform::PointerButton button, bool isDown,
                                 platform::InputDevices& devices);
  platform::Task<void> setKey(std::string key, bool isDown, platform::InputDevices& devices);
  // Down and up.
  platform::Task<void> pressKey(std::string key, platform::InputDevices& devices);
  Fingers& fingers() { return fingers_; }
  // Lets go of all of them. Never throws.
  platform::Task<void> releaseAll();

 private:
  std::set<platform::PointerButton> buttons_;
  std::set<std::string> keys_;
  Fingers fingers_;
  TouchDevices touchDevices_{fingers_};
};

}  // namespace tarni::session
