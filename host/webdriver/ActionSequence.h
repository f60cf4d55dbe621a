// ActionSequence: the sources of "Perform Actions" and what each does tick by tick, read and
// checked as the standard says. Plain values, any thread.
#pragma once

#include <chrono>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host::webdriver {

struct ActionItem {
  enum class Kind { Pause, KeyDown, KeyUp, PointerDown, PointerUp, PointerMove, Scroll };
  Kind kind = Kind::Pause;
  std::chrono::milliseconds duration{0};
  std::string key;     // as `input.keys` calls it; of a key
  std::string button;  // as `input.pointer` calls it; of a button
  double x = 0, y = 0;
  double right = 0, down = 0;  // of the wheel, in notches
  Json origin;                 // "viewport", "pointer" or a reference
};

struct ActionSource {
  std::string id;
  bool isPointer = false;
  bool isFinger = false;
  std::vector<ActionItem> items;  // one a tick
};

// Throws Error ("invalid argument").
std::vector<ActionSource> readActions(const Json& actions);

}  // namespace tarni::host::webdriver
