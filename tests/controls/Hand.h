// Hand: what a person does at a screen with the page of controls on it, by real input. It finds
// its targets in one copy of the page, the scout, and does each act there and on the copy that is
// recorded, which nobody may ask anything.
#pragma once

#include <optional>

#include "tests/controls/ControlsTable.h"
#include "tests/support/Desktop.h"
#include "tests/support/Wire.h"

namespace tarni::test {

class Hand {
 public:
  // The page has to be there, with nothing open above it.
  Hand(const Desktop& scouted, const Desktop& recorded, const Playback& scout);

  // Throws when the target does not show up.
  void act(const Act& act) const;

 private:
  using Rectangle = Desktop::Window;
  struct Element {
    std::string text;
    Rectangle at;  // on the screen
  };

  std::optional<Rectangle> find(const Target& target) const;
  static std::optional<Rectangle> find(const Target& target, const std::vector<Element>& all);
  std::vector<Element> elements() const;

  std::vector<const Desktop*> displays_;
  const Playback& scout_;
  // What is hit beside a menu or a window in front, where nothing else is looked at.
  std::vector<Element> page_;
};

}  // namespace tarni::test
