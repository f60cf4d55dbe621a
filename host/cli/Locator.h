// Locator: what an element looks like, as options of a command line, and the search for it.
// Target: one element to act on, named by its identifier or by a locator. Main thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/wire/PlaybackClient.h"

namespace CLI {
class App;
}

namespace tarni::host {

class Invocation;

class Locator {
 public:
  // --text, --partial, --xpath, --inside, --editable.
  void declareSearch(CLI::App& parser);
  // The same and --wait.
  void declare(CLI::App& parser);

  std::string tag;  // a class name; "" or "*" for any

  // True when anything but the waiting was given.
  bool isGiven() const;
  // For messages: `UIButton with the text "OK"`.
  std::string description() const;

  // One search, without waiting: in the key window, and in the others when nothing in it fits.
  Answer findOnce(Invocation& invocation) const;
  // Searches until something is found or the time of --wait has passed.
  Answer find(Invocation& invocation) const;

 private:
  std::optional<std::string> text_;
  std::optional<std::string> partial_;
  std::optional<std::string> xpath_;
  std::string inside_;
  bool editable_ = false;
  double waitSeconds_ = 0;
};

class Target {
 public:
  // The locator's options, --tag, --first, --nth and positional arguments: the element's identifier
  // unless a locator is given, then what `others` names.
  void declare(CLI::App& parser, const std::string& others = "");

  // The identifier of the only element that fits; throws NotFound. What an identifier names is
  // asked for, as the agent answers an action on an unknown element like any other. `others` is how
  // many arguments the command takes besides.
  std::string resolve(Invocation& invocation, std::size_t others = 0) const;
  // For messages: the locator's description, or the identifier.
  std::string description() const;
  // The arguments besides the element.
  std::vector<std::string> others() const;
  const std::vector<std::string>& arguments() const { return arguments_; }
  // True when options say what the element is.
  bool isGiven() const;

 private:
  std::string choose(const std::vector<std::string>& found) const;

  Locator locator_;
  bool first_ = false;
  std::optional<std::size_t> nth_;
  std::vector<std::string> arguments_;
};

}  // namespace tarni::host
