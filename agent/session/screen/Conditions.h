// Condition: what a client waits for. Main thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "agent/session/protocol/SessionError.h"
#include "agent/session/screen/Selector.h"

namespace tarni::session {

// One thing that must hold of an element, of what a selector finds, or of the windows. Views are
// looked at whenever it is asked; pages, which take a while to answer, when they are told to be.
class Condition {
 public:
  // Throws SessionError (invalid argument, invalid selector) for what is none.
  explicit Condition(const Json& text);

  // Asks the pages that the condition may be about. True when there are any.
  platform::Task<bool> askPages();

  bool holds() const;
  // Whether the latest look has come by any that have not been asked.
  bool hasMetPages() const { return hasMetPages_; }
  // What there is instead: {"condition", "holds"} and, of a window, "windows" (the titles), else
  // "found" (how many) and "elements" (the first of them).
  Json instead() const;

 private:
  // What is told of those that are meant.
  std::vector<Json> matches(std::size_t limit) const;
  bool windowHolds() const;

  Json text_;
  std::string state_;
  std::optional<Handle> element_;
  std::optional<Selector> selector_;
  std::vector<Json> inPages_;
  mutable bool hasMetPages_ = false;
};

}  // namespace tarni::session
