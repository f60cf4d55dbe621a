// Locator: what an element looks like, as options of a command line, and the search for it, over
// the session channel or over the playback port. Target: one element to act on, named by its
// identifier or by a locator. Main thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/guard/Json.h"
#include "host/session_client/Selector.h"
#include "host/wire/PlaybackClient.h"

namespace CLI {
class App;
}

namespace tarni::host {

class Invocation;

class Locator {
 public:
  Locator() = default;
  // What `parseChain` reads.
  explicit Locator(std::string chain) : chain_(std::move(chain)) {}

  // --text, --partial, --xpath, --identifier, --label, --inside, --editable and so on.
  void declareSearch(CLI::App& parser);
  // The same and --wait.
  void declare(CLI::App& parser);

  std::string tag;  // a class name; "" or "*" for any

  // True when anything but the waiting was given.
  bool isGiven() const;
  // For messages: `UIButton with the text "OK"`.
  std::string description() const;
  // Throws NotFound that says what there is in its place.
  [[noreturn]] void refuse(Invocation& invocation) const;
  // For messages: `3 elements with the text "OK"`.
  std::string several(std::size_t count) const;

  // By the playback port. One search, without waiting: in the key window, and in the others when
  // nothing in it fits.
  Answer findOnce(Invocation& invocation) const;
  // Searches until something is found or the time of --wait has passed.
  Answer find(Invocation& invocation) const;

  // By the session channel: the descriptions of all that fit, in all windows. A text that nothing
  // shows may be a placeholder or a label.
  std::vector<Json> elementsOnce(Invocation& invocation) const;
  // Searches until something is found or the time of --wait has passed.
  std::vector<Json> elements(Invocation& invocation) const;
  // Searches until something is found (with `gone`, until nothing is) or the deadline has passed;
  // whether it came so.
  bool await(Invocation& invocation, bool gone, Deadline deadline) const;

 private:
  // "" for any.
  std::string kind() const;
  // Behind the kind: ` with the text "OK"`.
  std::string looks() const;
  SelectorChain chain() const;
  std::optional<long> within() const;
  void pause(Invocation& invocation, bool gone, Deadline deadline) const;
  void requireNothingOfTheSession() const;

  Selector selector_;  // what only the session channel knows
  std::string chain_;
  std::optional<std::string> text_;
  std::optional<std::string> partial_;
  std::optional<std::string> xpath_;
  std::string inside_;
  bool editable_ = false;
  double waitSeconds_ = 0;
};

class Target {
 public:
  Target() = default;
  // An element that looks so, as `parseChain` reads it.
  explicit Target(std::string chain) : locator_(std::move(chain)), hasOptions_(false) {}

  // The locator's options, --tag, --first, --nth and positional arguments: the element's identifier
  // unless a locator is given, then what `others` names.
  void declare(CLI::App& parser, const std::string& others = "");

  // The identifier of the only element that fits; throws NotFound. What an identifier names is
  // asked for, as the agent answers an action on an unknown element like any other. `others` is how
  // many arguments the command takes besides.
  std::string resolve(Invocation& invocation, std::size_t others = 0) const;
  // The same by the session channel: its handle. Of several that fit, those that are visible count,
  // or all where none is. If one alone of them is enabled, it is that; else they are listed on
  // standard error with what tells them apart.
  long element(Invocation& invocation, std::size_t others = 0) const;
  // Its description.
  Json described(Invocation& invocation, std::size_t others = 0) const;
  // For messages: the locator's description, or the identifier.
  std::string description() const;
  // The arguments besides the element.
  std::vector<std::string> others() const;
  const std::vector<std::string>& arguments() const { return arguments_; }
  // True when options say what the element is.
  bool isGiven() const;
  // True when they do or there is an argument more than `others`.
  bool isNamed(std::size_t others = 0) const;

 private:
  void requireArguments(std::size_t others) const;
  // Which of so many it is; null when several fit and none is chosen. Throws NotFound.
  std::optional<std::size_t> chosen(std::size_t count) const;
  [[noreturn]] void refuseSeveral(std::size_t count) const;
  std::string choose(Invocation& invocation, const std::vector<std::string>& found) const;
  Json choose(Invocation& invocation, std::vector<Json> found) const;

  Locator locator_;
  bool hasOptions_ = true;  // --first and --nth among them
  bool first_ = false;
  std::optional<std::size_t> nth_;
  std::vector<std::string> arguments_;
};

}  // namespace tarni::host
