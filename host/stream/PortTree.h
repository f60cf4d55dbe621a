// PortTree: the view tree, put together again from the agent's element descriptions. These come
// parent first, siblings in order, each with the number of its children, and so fix the tree. What
// is kept is the way from the window to one view, as trees may be very deep. Main thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host {

class PortTree {
 public:
  // Goes on to the view that is described next. The rest tells of the view gone to last.
  void goTo(const Json& description);

  std::size_t depth() const { return path_.size() - 1; }
  // "UIButton[1]": class and place among the siblings of that class.
  const std::string& step() const { return path_.back().step; }
  // The steps from the window down, each behind a backslash. Null a hundred levels down: each level
  // of a very deep tree would have a longer one.
  std::optional<std::string> xpath() const;

  // For a person, on one line: "…" stands for the start of a path that is null.
  std::string position() const;
  // Two blanks a level, and the depth in figures where there would be too many.
  std::string indentation() const;

 private:
  struct Level {
    std::string step;
    long childrenToCome = 0;
    std::unordered_map<std::string, std::size_t> seenOfClass = {};
  };
  std::string stepsFrom(std::size_t level) const;

  Level window_;
  std::vector<Level> path_;
};

}  // namespace tarni::host
