#include "host/player/Candidates.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "host/guard/Likeness.h"
#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/session/Step.h"

namespace tarni::host {

namespace {

constexpr std::size_t kMost = 5;
constexpr double kNear = 60;  // points

// What tells one element from another, and how much it counts.
struct Trait {
  const char* member;
  double weight;
};
constexpr Trait kTraits[] = {
    {"identifier", 6}, {"text", 5}, {"label", 4}, {"placeholder", 4}, {"class", 3}};

double distance(const Json& one, const Json& other) {
  const Json& from = objectIn(one, "rect");
  const Json& to = objectIn(other, "rect");
  if (from.empty() || to.empty()) return INFINITY;
  return std::hypot(numberIn(from, "x") - numberIn(to, "x"),
                    numberIn(from, "y") - numberIn(to, "y"));
}

double nearness(const Json& wanted, const Json& there) {
  double score = 0;
  for (const auto& [member, weight] : kTraits) {
    const auto text = textIn(wanted, member);
    if (text.empty()) continue;
    const double alike = likeness(text, textIn(there, member));
    if (alike >= kAlike) score += weight * alike;
  }
  if (distance(wanted, there) < kNear) score += 2;
  return score;
}

std::string whyNot(const Json& wanted, const Json& there) {
  std::string reasons;
  const auto add = [&reasons](const std::string& reason) { addWord(reasons, reason); };
  for (const auto& [member, weight] : kTraits) {
    const auto text = textIn(wanted, member);
    const auto own = textIn(there, member);
    if (text.empty() || own == text) continue;
    add("its " + std::string(member) + " is " + inQuotes(own) + ", not " + inQuotes(text));
  }
  if (!there.value("visible", true)) add("it is hidden");
  if (!there.value("enabled", true)) add("it is disabled");
  return reasons.empty() ? "it is like that, but no way to the element fits it alone" : reasons;
}

}  // namespace

std::vector<Candidate> candidatesFor(const Json& wanted, std::span<const Json> all) {
  constexpr double kTooFar = 3;
  std::vector<std::pair<double, const Json*>> near;
  for (const Json& there : all) {
    const double score = nearness(wanted, there);
    if (score > kTooFar) near.emplace_back(score, &there);
  }
  std::ranges::stable_sort(near, std::greater<>(), &std::pair<double, const Json*>::first);
  std::vector<Candidate> candidates;
  for (const auto& [score, there] : near) {
    if (candidates.size() == kMost) break;
    candidates.push_back({*there, whyNot(wanted, *there)});
  }
  return candidates;
}

}  // namespace tarni::host
