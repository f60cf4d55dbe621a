// ControlsTable: the tables of docs/controls.md. A row is something that a person does with a
// control of the page in samples/controls, the steps that have to come, and what the page has to
// tell. Plain values.
#pragma once

#include <string>
#include <vector>

namespace tarni::test {

// Where the hand goes: a place in what the window in front shows, in parts of its size.
struct Target {
  enum class Kind { Element, BesideLabel, Window };

  Kind kind = Kind::Element;
  std::string text;  // of the element, of the label to the left of it, the window's title
  double x = 0.5;
  double y = 0.5;
};

struct Act {
  std::string verb;  // as in the table
  Target target;     // of the pointer; with no text for what the keyboard does
  std::string text;  // what is typed, the key's name
  int pixels = 0;    // how far a drag goes to the right

  bool isOfPointer() const { return !target.text.empty(); }
};

struct Row {
  enum class Played { Same, Otherwise, Stops };

  std::string control;
  std::vector<Act> acts;
  std::vector<std::string> steps;  // `ClickButton UIButton "Press"`
  // What the session channel tells: `choose UIPickerView "Colour" = Blue`
  std::vector<std::string> told;
  std::vector<std::string> states;  // "colour=Blue"
  Played played = Played::Same;
  std::vector<std::string> statesPlayed = {};  // when it is played otherwise
};

// What is done with one copy of the page, in this order.
using Session = std::vector<Row>;

// Those below the heading `toolkit`, without the rows of another major of Qt. Throws
// std::runtime_error for what is not a table.
std::vector<Session> sessionsOf(const std::string& toolkit, char major);

}  // namespace tarni::test
