// CommandField: what a playback command holds under one of its keys. All of them are text; a value
// of another kind is kept as such, and only a command that uses it fails. Plain value; any thread.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "platform/Foundation/NSException.h"

namespace tarni {

class CommandField {
 public:
  // The command lacks the key.
  CommandField() = default;
  explicit CommandField(std::string text) : text_(std::move(text)) {}
  static CommandField thatIsNoText(std::string key) {
    CommandField field;
    field.keyOfOtherKind_ = std::move(key);
    return field;
  }

  // Empty when the command lacks the key. Throws NSException that names the key when its value is
  // not text.
  const std::string& text() const {
    if (!keyOfOtherKind_) return text_;
    throw platform::NSException(platform::NSInvalidArgumentException,
                                *keyOfOtherKind_ + " must be a string");
  }

 private:
  std::string text_;
  std::optional<std::string> keyOfOtherKind_;
};

}  // namespace tarni
