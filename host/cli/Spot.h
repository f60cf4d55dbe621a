// Spots: places for the pointer, as people write them, and keys that are down meanwhile. Main
// thread.
#pragma once

#include <string>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host {

class Invocation;

// {"x": 3, "y": 4} of "3,4". Throws std::invalid_argument.
Json pointFrom(const std::string& text);

// A target of the session channel: "12" is the middle of the element with that handle, "12@3,4" is
// counted from its upper left corner, "@30,40" from that of the key window, and anything else says
// what the element looks like (SelectorChain), as "Row 3". Throws NotFound when not exactly one
// visible element fits.
Json spotFrom(Invocation& invocation, const std::string& text);

// The element of a word that names one: a handle, or what it looks like.
long elementFrom(Invocation& invocation, const std::string& word);

// Keys as "Control+Shift" that are down for as long as this lives.
class HeldKeys {
 public:
  HeldKeys(Invocation& invocation, const std::string& keys);
  HeldKeys(const HeldKeys&) = delete;
  HeldKeys& operator=(const HeldKeys&) = delete;
  // Let go by the program as well when the connection has gone.
  ~HeldKeys();

 private:
  void set(const char* way);

  Invocation& invocation_;
  std::vector<std::string> keys_;
};

}  // namespace tarni::host
