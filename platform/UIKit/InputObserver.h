// InputObserver: sees what a person does at the application's devices, each event before the
// application handles it, also by Platform::personsDevices. What the agent does by itself
// (InputDevices, synthesised touches, texts that it sets) does not come by.
#pragma once

#include <string>
#include <string_view>

#include "platform/UIKit/InputDevices.h"
#include "platform/UIKit/UIView.h"

namespace tarni::platform {

enum class InputKind {
  Press,  // of a button; a finger is the left one
  Move,
  Release,
  Wheel,
  KeyDown,
  KeyUp,
  Text,     // that an input method commits
  Pointed,  // the view has opened something because the pointer rests on it
  Resized,  // the window, by its frame
  Closed    // the same
};

// Keys that are down meanwhile, as bits.
inline constexpr unsigned kShift = 1;
inline constexpr unsigned kControl = 2;
inline constexpr unsigned kAlt = 4;
inline constexpr unsigned kMeta = 8;

struct InputEvent {
  InputKind kind{};
  double time = 0;               // when the device reported it, on the clock of systemUptime
  UIWindowRef window = nullptr;  // of a key that in which the pointer rests, if it is known
  // What takes the press, lies below the pointer, has the focus. Null for nothing, and for a move.
  UIViewRef view = nullptr;
  CGPoint point = {};  // of the pointer, in the window's coordinates
  PointerButton button = PointerButton::Left;
  int clicks = 1;  // 2 for the press that makes a double click
  unsigned modifiers = 0;
  std::string_view key = {};  // as InputDevices calls it; empty for one without a name
  std::string text = {};      // that the key types or the input method commits
  bool takesText = false;     // the view takes what is typed as text
  bool isSecret = false;      // and does not show it
  bool isRepeat = false;      // the key is held down
  CGPoint notches = {};       // of the wheel, to the right and down
};

class InputObserver {
 public:
  virtual ~InputObserver() = default;
  // Main thread, in nested loops as well. Throws nothing.
  virtual void willHandle(const InputEvent& event) noexcept = 0;
};

}  // namespace tarni::platform
