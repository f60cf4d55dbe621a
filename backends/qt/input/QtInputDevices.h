// QtInputDevices: mouse and keyboard of the agent, in its own hands or in a person's. Their events
// come in the order of the program's input and go by those who see what the window system sends,
// the recorder included; who observes input is shown a person's. GUI thread.
#pragma once

#include "backends/qt/input/QtKeyboard.h"
#include "backends/qt/input/QtMouse.h"
#include "backends/qt/program/InputQueue.h"
#include "platform/UIKit/InputDevices.h"

namespace tarni::qt {

// What the hands share.
struct QtDevices {
  QtMouse mouse;
  QtKeyboard keyboard;
};

class QtInputDevices final : public platform::InputDevices {
 public:
  QtInputDevices(QtDevices& devices, Doer doer) : devices_(devices), doer_(doer) {}

  platform::Task<void> movePointer(platform::UIWindowRef window, platform::CGPoint point) override;
  // A press on a window that is not the active one makes it so first, as a window manager does.
  platform::Task<void> setButton(platform::PointerButton button, bool isDown) override;
  platform::Task<void> turnWheel(double right, double down) override;
  // To the window with the keyboard focus; to the key window while none of the program's has it.
  platform::Task<void> setKey(std::string key, bool isDown) override;
  // As a quick hand does it, whose key is up before the program gets to know that it was down: what
  // the press changed is painted once, not once more for the release.
  platform::Task<void> pressKey(std::string key) override;
  platform::Task<void> commitText(std::string text) override;

 private:
  platform::Task<void> perform(std::function<void()> work) const;
  std::function<void()> noted(std::function<void()> work) const;
  std::function<void()> settingKey(const QtKeyboard::Key& key, bool isDown) const;

  QtDevices& devices_;
  const Doer doer_;
};

}  // namespace tarni::qt
