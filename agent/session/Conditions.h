// Condition: what a client waits for. Main thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "agent/session/Selector.h"

namespace tarni::session {

// One thing that must hold of an element, of what a selector finds, or of the windows.
class Condition {
 public:
  // Throws SessionError (invalid argument, invalid selector) for what is none.
  explicit Condition(const Json& text);

  bool holds() const;
  // What there is instead: the condition, with "found" or "text" or what else tells.
  Json instead() const;

 private:
  std::vector<Match> matches(std::size_t limit) const;
  bool windowHolds() const;

  Json text_;
  std::string state_;
  std::optional<long> element_;
  std::optional<Selector> selector_;
};

}  // namespace tarni::session
