// ExportedAct: what one line or two of an exported test do: a step of a session, in the terms of
// WebDriver and of no language. Plain values.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/export/ExportedElement.h"
#include "host/session/Step.h"

namespace tarni::host {

struct ExportedAct {
  enum class Kind {
    Click,      // with button, count, modifiers, at
    LongPress,  // the same, for `seconds`
    Drag,       // from `at` along `way`, or to `target`
    Wheel,      // by `offset`
    Hover,
    Press,  // the key, count times, with modifiers
    Type,   // text, or what the environment has for the secret
    Choose,
    Switch,
    Expand,
    Resize,  // to `offset`
    Close,
    CheckState,  // that it is `text`: "there", "gone", "checked" …
    CheckText,
    CheckPartOfText,
  };
  struct Offset {
    long x = 0, y = 0;
    bool operator==(const Offset&) const = default;
  };

  Kind kind = Kind::Click;
  std::optional<ExportedElement> element = {};  // null where the focus decides
  std::string button = "left";
  int count = 1;
  std::vector<std::string> modifiers = {};  // "Control"
  std::optional<Offset> at = {};            // from the element's middle, where that matters
  double seconds = 0;
  std::vector<Offset> way = {};  // each from the point before
  std::optional<ExportedElement> target = {};
  std::optional<Offset> targetAt = {};
  Offset offset = {};
  std::string text = {};    // typed, chosen, expected; the key
  std::string secret = {};  // the variable of the environment
  bool isOn = false;        // switched on, expanded

  // A click for which every language has a word of its own.
  bool isPlainClick() const { return button == "left" && count == 1 && modifiers.empty() && !at; }
};

// A step may be several: the entries of a menu. Throws std::invalid_argument for a step that says
// no way to find its element.
std::vector<ExportedAct> exportedActs(const Step& step);

}  // namespace tarni::host
