#include "host/guard/Likeness.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "host/guard/Text.h"

namespace tarni::host {

namespace {

constexpr std::size_t kLongestCompared = 100;

}  // namespace

double likeness(std::string_view one, std::string_view other) {
  if (one == other) return 1;
  one = one.substr(0, kLongestCompared);
  other = other.substr(0, kLongestCompared);
  if (one.empty() || other.empty()) return 0;
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), 0U);
  for (std::size_t i = 0; i < one.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < other.size(); ++j) {
      const auto replaced = diagonal + (one[i] == other[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
    }
  }
  const auto longer = static_cast<double>(std::max(one.size(), other.size()));
  return 1 - static_cast<double>(row.back()) / longer;
}

double likenessInAnyCase(std::string_view one, std::string_view other) {
  return likeness(lowerCase(std::string(one)), lowerCase(std::string(other)));
}

std::string_view nearestName(std::string_view word, std::span<const std::string_view> names) {
  std::string_view nearest;
  double most = kAlike;
  for (const auto name : names) {
    const double alike = likenessInAnyCase(word, name);
    if (alike < most) continue;
    most = alike;
    nearest = name;
  }
  return nearest;
}

std::string knownInsteadOf(std::string_view word, std::span<const std::string_view> names) {
  const auto meant = nearestName(word, names);
  std::string text =
      meant.empty() ? "known: " : "did you mean \"" + std::string(meant) + "\"? Known: ";
  for (const auto& name : names) {
    if (&name != &names.front()) text += ", ";
    text += name;
  }
  return text;
}

}  // namespace tarni::host
