// Criteria: what a selector asks of an element; all that is given must hold. Plain value.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "agent/session/protocol/JsonText.h"
#include "agent/session/protocol/Method.h"

namespace tarni::session {

struct Criteria {
  std::optional<std::string> identifier = {}, label = {}, text = {}, textContains = {},
                             placeholder = {}, className = {}, kind = {}, xpath = {};
  std::optional<bool> visible = {}, focused = {}, selected = {};
  std::optional<std::string> group = {}, windowTitle = {};
  std::optional<long> within = {};

  // The parameters that make them, for the rows of methods that take some.
  static std::span<const Parameter> parameters();
  // From an object with such members; others are not looked at. Throws SessionError: invalid
  // selector when it has none of them, invalid argument for wrong types.
  static Criteria from(const Json& members);
  // Throws SessionError (invalid argument) for an object with other members.
  static void requireNoOthers(const Json& members);
  // The object again.
  Json asJson() const;
  void write(JsonText& text) const;
};

}  // namespace tarni::session
