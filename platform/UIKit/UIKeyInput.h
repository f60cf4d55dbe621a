// UIKeyInput: a view that takes the keys of a keyboard on the screen while it is first responder,
// on a platform whose applications get no others. Main thread.
#pragma once

#include <string>

#include "platform/Task.h"

namespace tarni::platform {

class UIKeyInput {
 public:
  virtual ~UIKeyInput() = default;
  // False for a view that takes none: it does not get the others then.
  virtual bool takesKeys() const = 0;
  // Where the caret is, in place of what is selected. The application hears of it.
  virtual Task<void> insertText(std::string text) = 0;
  virtual Task<void> deleteBackward() = 0;
  // What the return key does: a new line, or what ends a field of one line.
  virtual Task<void> insertReturn() = 0;
  virtual Task<void> selectAll() = 0;
};

}  // namespace tarni::platform
