// Names of members and parameters, and what is said in place of one that nobody knows. Any thread.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "agent/session/protocol/Method.h"

namespace tarni::session {

std::vector<std::string_view> namesOf(std::span<const Parameter> parameters);

// "a, b and c".
std::string listed(std::span<const std::string_view> names);

// Throws SessionError (invalid argument), with the one of them that it is most like:
// `a selector has no "tet"; did you mean "text"? Known: …`.
[[noreturn]] void refuseName(const std::string& what, std::string_view name,
                             std::span<const std::string_view> known);

// Refuses an object with a member of another name.
void requireKnownMembers(const std::string& what, const Json& object,
                         std::span<const std::string_view> known);

}  // namespace tarni::session
