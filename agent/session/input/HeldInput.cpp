#include "agent/session/input/HeldInput.h"

#include <utility>

#include "agent/session/input/Keys.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni::session {

using platform::Task;

Task<void> HeldInput::setButton(platform::PointerButton button, bool isDown,
                                platform::InputDevices& devices) {
  // Noted before it goes down: the client may go while it does.
  if (isDown) buttons_.insert(button);
  co_await devices.setButton(button, isDown);
  if (!isDown) buttons_.erase(button);
}

Task<void> HeldInput::setKey(std::string key, bool isDown, platform::InputDevices& devices) {
  key = keyNamed(key);
  if (isDown) keys_.insert(key);
  try {
    co_await devices.setKey(key, isDown);
  } catch (...) {
    keys_.erase(key);
    throw;
  }
  if (!isDown) keys_.erase(key);
}

Task<void> HeldInput::pressKey(std::string key, platform::InputDevices& devices) {
  key = keyNamed(key);
  co_await devices.pressKey(key);
  keys_.erase(key);
}

Task<void> HeldInput::releaseAll() {
  const auto buttons = std::exchange(buttons_, {});
  const auto keys = std::exchange(keys_, {});
  try {
    co_await fingers_.cancel();
    for (const platform::PointerButton button : buttons) {
      co_await devices().setButton(button, false);
    }
    for (const std::string& key : keys) co_await devices().setKey(key, false);
  } catch (...) {
    platform::logFailure("What a client held down stays so");
  }
}

platform::InputDevices& HeldInput::devices() {
  platform::InputDevices* const known = platform::current().inputDevices;
  return known ? *known : touchDevices_;
}

platform::InputDevices& HeldInput::personsDevices() {
  platform::InputDevices* const known = platform::current().personsDevices;
  return known ? *known : devices();
}

}  // namespace tarni::session
