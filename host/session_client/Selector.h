// Selector: what an element looks like, as everything on the host's side says it: on the command
// line, in sessions, for WebDriver. All that it says must hold. SelectorChain: such a one inside
// another. Plain values, any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host {

class SessionClient;

struct Selector {
  using Member = std::optional<std::string>;
  Member identifier, label, text, textContains, placeholder, className, kind, xpath, group,
      windowTitle;
  std::optional<bool> isVisible = std::nullopt;
  std::optional<bool> isFocused = std::nullopt;
  std::optional<bool> isSelected = std::nullopt;

  // From "kind=UIButton && text=OK": a member is called as in the parameters of `element.find`.
  // What names no member is a text, unless it looks like one that is misspelt ("tet=OK"). A
  // position may have slashes. Throws std::invalid_argument for such a one, and for a text that
  // says nothing.
  static Selector parse(std::string_view text);
  // What `parse` reads.
  std::string written() const;

  // The parameters of `element.find`; an object.
  Json parameters() const;
  static Selector fromParameters(const Json& parameters);
  // Throws std::invalid_argument that says what of the parameters no selector has.
  static void require(const Json& parameters);
  bool isEmpty() const { return *this == Selector(); }
  bool operator==(const Selector&) const = default;
};

// A position as the program writes it: people may write it with slashes.
std::string withBackslashes(std::string position);

// Each stands in the one before.
using SelectorChain = std::vector<Selector>;

// "kind=UITableView >> text=Row 3".
SelectorChain parseChain(std::string_view text);
std::string written(const SelectorChain& chain);

// The descriptions of all that fit, in the order of the tree. The first looks in the element with
// the handle `within`, or everywhere. Throws as SessionClient::call does.
std::vector<Json> findAll(SessionClient& client, const SelectorChain& chain,
                          std::optional<long> within = std::nullopt);

}  // namespace tarni::host
