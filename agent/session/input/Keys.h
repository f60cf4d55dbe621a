// Keys and buttons as clients name them. Main thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "agent/session/input/HeldInput.h"
#include "platform/Task.h"

namespace tarni::session {

// "left", "right", "middle", "back" or "forward". Throws SessionError (invalid argument).
platform::PointerButton buttonNamed(const std::string& name);
std::string_view nameOf(platform::PointerButton button);

// What KeyboardEvent.key calls a key that people call otherwise as well ("ctrl", "Return", "Left");
// any other name as it is.
std::string keyNamed(const std::string& name);

// Keys that are down together: "Control+Shift+F2", "Control++", "ctrl-a", "a"; the empty text is
// none. Throws SessionError (invalid argument) for more than 16.
class KeyChord {
 public:
  explicit KeyChord(const std::string& text);
  // The last of them, which the others modify; the empty text when there are none.
  std::string takeLast();
  // Down in their order, up in the other.
  platform::Task<void> press(HeldInput& held, platform::InputDevices& devices) const;
  platform::Task<void> release(HeldInput& held, platform::InputDevices& devices) const;

 private:
  std::vector<std::string> keys_;
};

// Down and up.
platform::Task<void> pressKeys(HeldInput& held, std::string chord, platform::InputDevices& devices);

}  // namespace tarni::session
