#include "agent/session/input/HeldInput.h"

#include <utility>

#include "agent/session/input/Keys.h"
#include "agent/session/protocol/SessionError.h"
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

Task<void> HeldInput::releaseAll() {
  const auto buttons = std::exchange(buttons_, {});
  const auto keys = std::exchange(keys_, {});
  try {
    co_await fingers_.cancel();
    for (const platform::PointerButton button : buttons) {
      co_await inputDevices().setButton(button, false);
    }
    for (const std::string& key : keys) co_await inputDevices().setKey(key, false);
  } catch (...) {
    platform::logFailure("What a client held down stays so");
  }
}

platform::InputDevices& inputDevices() {
  platform::InputDevices* const devices = platform::current().inputDevices;
  if (devices) return *devices;
  throw SessionError(errors::kUnsupported,
                     "this platform has no pointer and no keyboard that could be moved");
}

platform::InputDevices& personsDevices() {
  platform::InputDevices* const devices = platform::current().personsDevices;
  return devices ? *devices : inputDevices();
}

}  // namespace tarni::session
