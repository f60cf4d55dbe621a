#include "agent/session/protocol/Names.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "platform/Foundation/Lowercase.h"

namespace tarni::session {
namespace {

using Names = std::span<const std::string_view>;

// Letters to put in, leave out or change to make one of the other.
std::size_t distance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < one.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < other.size(); ++j) {
      const std::size_t changed = diagonal + (one[i] == other[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, diagonal + 1, row[j] + 1});
    }
  }
  return row.back();
}

// "" when none is like it.
std::string_view nearest(std::string_view name, Names known) {
  constexpr std::size_t kLongest = 40;
  if (known.empty() || name.size() > kLongest) return "";
  const std::string wanted = platform::lowercase(name);
  const auto isFrom = [&wanted](std::string_view one) {
    return distance(wanted, platform::lowercase(one));
  };
  const std::string_view found = *std::ranges::min_element(known, {}, isFrom);
  return isFrom(found) * 2 < std::max(name.size(), found.size()) ? found : "";
}

}  // namespace

std::vector<std::string_view> namesOf(std::span<const Parameter> parameters) {
  std::vector<std::string_view> names;
  for (const Parameter& parameter : parameters) names.push_back(parameter.name);
  return names;
}

std::string listed(Names names) {
  std::string text;
  for (const std::string_view& name : names) {
    const bool isLast = &name == &names.back();
    if (!text.empty()) text += isLast ? " and " : ", ";
    text += name;
  }
  return text;
}

void refuseName(const std::string& what, std::string_view name, Names known) {
  const std::string_view meant = nearest(name, known);
  const std::string hint =
      meant.empty() ? "known: " : "did you mean \"" + std::string(meant) + "\"? Known: ";
  throw SessionError(errors::kInvalidArgument,
                     what + " has no \"" + std::string(name) + "\"; " + hint + listed(known));
}

void requireKnownMembers(const std::string& what, const Json& object, Names known) {
  for (const auto& [name, value] : object.items()) {
    if (std::ranges::find(known, name) == known.end()) refuseName(what, name, known);
  }
}

}  // namespace tarni::session
