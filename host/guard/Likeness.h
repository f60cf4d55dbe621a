// Likeness: how much two words have in common, for what a person may have meant. Plain values, any
// thread.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarni::host {

// 1 for the same text, 0 for nothing in common: the steps from one to the other against the longer.
// Of long texts only the beginnings count.
double likeness(std::string_view one, std::string_view other);
// The same in any case of ASCII's letters.
double likenessInAnyCase(std::string_view one, std::string_view other);

// Of two texts that one may be meant by the other.
inline constexpr double kAlike = 0.6;

// The one of `names` that is meant by a word that is none of them; "" when none is like it.
std::string_view nearestName(std::string_view word, std::span<const std::string_view> names);

// "did you mean "text"? Known: identifier, text", or the known ones alone.
std::string knownInsteadOf(std::string_view word, std::span<const std::string_view> names);

}  // namespace tarni::host
