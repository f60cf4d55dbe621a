// Step: one step of a session: an act of a person as the session channel tells it
// (docs/session.md#steps), or a check that was added to it. It keeps every member that it came
// with, known or not. A plain value, any thread.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host {

class Step {
 public:
  static constexpr std::string_view kCheck = "check";

  // Throws std::invalid_argument that says what is wrong with it.
  explicit Step(Json members);
  // What a hand wrote has names that are nearly known ones, or words that are none of the few that
  // a member may have: throws std::invalid_argument that says which. What a recorder tells, of a
  // later version perhaps, is taken as it is.
  static void refuseMisspelt(const Json& members);
  // That an element, described as a step's element is, shows the text; without one that it is
  // there.
  static Step check(Json element, const std::optional<std::string>& text);

  const Json& json() const { return members_; }
  std::string act() const { return textIn(members_, "act"); }
  // As it was recorded, from 1; 0 for what was added.
  long order() const;
  // Milliseconds since 1970; 0 when it is not known.
  double time() const;
  // An empty object when it has none.
  const Json& element() const { return objectIn(members_, "element"); }
  // Of clicks and of presses of a key, 1 to 1,000.
  int count() const;
  // The name of the secret that it types, "" for none.
  std::string secret() const { return textIn(members_, "secret"); }

  // What is typed, chosen or checked for; null where there is nothing to change.
  std::optional<std::string> text() const;
  void setText(const std::string& text);

  // `choose UIPickerView "Colour" = Blue`
  std::string inWords() const;

  bool operator==(const Step&) const = default;

 private:
  const char* memberOfText() const;

  Json members_;
};

// Of the wheel's notches, as clients of WebDriver count its way.
inline constexpr double kPointsANotch = 120;

// The ways to find an element of a step, best first: each the parameters of `element.find`.
std::vector<Json> locatorsIn(const Json& element);

// `text=OK && class=UIButton`
std::string locatorInWords(const Json& find);

// Whether something told the element from all others when it was recorded: not so a menu's window.
bool isToBeTold(const Json& element);

// "Control+Shift+s": what goes down, in this order. A plus where a key is due is the key itself.
std::vector<std::string> keysOfChord(const std::string& chord);

// `the dialog "Save?"`, "a window without a title": of its description.
std::string windowInWords(const Json& window);

// `UIButton "OK"`. What a control or a field shows changes; `isValue` says to call it by what
// stands beside it.
std::string elementInWords(const Json& element, bool isValue = false);

}  // namespace tarni::host
