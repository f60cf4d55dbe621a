// StreamStep: one step of a recorded session, as far as playing it needs it. A plain value.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "host/guard/Json.h"

namespace tarni::host {

struct StreamStep {
  enum class Kind { Click, Type, SwitchOn, SwitchOff };

  std::size_t number = 0;  // from 1
  std::size_t line = 0;    // of the session file
  double seconds = 0;      // when it came, from the start of the recording
  Kind kind = Kind::Click;
  std::string action;     // as recorded: "ClickButton"
  bool isInPage = false;  // of a web view; its class is a tag then
  std::string className;
  std::string text;          // as recording reads it: of a text field its placeholder
  bool isTextItsOwn = true;  // false where it tells a state: "1" of a switch, a slider's value
  std::string id;
  std::string label;  // of accessibility; of a field what it holds
  std::string xpath;
  std::optional<std::size_t> index;  // among all views of its class, from 0
  std::string data;                  // the text to type
  std::string picture;               // a JPEG in base-64, "" when there was none

  // Throws std::invalid_argument that says what is wrong with it.
  static StreamStep fromJson(const Json& step);

  // For a person, on one line: `UIButton "OK"`, without the text when there is none.
  std::string element() const;
  // `type "secret" into`, the action in a person's words.
  std::string deed() const;
};

}  // namespace tarni::host
