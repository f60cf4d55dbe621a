// InputDevices: a person's mouse and keyboard. What they do is handled by the application as a
// person's input is, but is not shown to "sendEvent:", so that it is never recorded as a person's
// act.
//
// Each task ends once the application has been given the event, even while the application is still
// inside its handling (a modal dialog). A platform may lack a device: Platform::inputDevices is
// then null, or the method throws NSException and says so. Main thread.
#pragma once

#include <string>
#include <utility>

#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni::platform {

inline constexpr const char* kTakesNoTextException = "TakesNoTextException";

enum class PointerButton { Left, Right, Middle, Back, Forward };

class InputDevices {
 public:
  virtual ~InputDevices() = default;

  // To a point of the window, in its coordinates. While a button is down the window on which it
  // went down goes on getting the moves, wherever the pointer is.
  virtual Task<void> movePointer(UIWindowRef window, CGPoint point) = 0;
  // Where the pointer is. A second press of a button at the same place, soon after the first, is a
  // double click. A button that is already as asked for stays so.
  virtual Task<void> setButton(PointerButton button, bool isDown) = 0;
  // Notches of the wheel where the pointer is; positive is to the right and down.
  virtual Task<void> turnWheel(double right, double down) = 0;

  // A key by the name that the W3C's KeyboardEvent.key has for it ("Enter", "F2", "ArrowLeft",
  // "Shift", "a", "Ä"). The modifiers are keys like others, and count while they are down. Throws
  // NSException (invalid argument) for a name that is not one.
  virtual Task<void> setKey(std::string key, bool isDown) = 0;
  // The same down and up again, without a pause in between.
  virtual Task<void> pressKey(std::string key) {
    co_await setKey(key, true);
    co_await setKey(std::move(key), false);
  }
  // Text in any script (UTF-8) into what has the focus, as an input method commits it. Throws
  // NSException with the name kTakesNoTextException when nothing there takes it.
  virtual Task<void> commitText(std::string text) = 0;
};

}  // namespace tarni::platform
