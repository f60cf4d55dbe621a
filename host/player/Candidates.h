// Candidates: what stands in the program in place of an element that a step looks for, nearest
// first, and why each is not it. Plain values, any thread.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host {

struct Candidate {
  Json description;
  std::string whyNot;
};

// `wanted` is the element as recorded, `all` are the descriptions of those that are there. A few at
// most, none that has nothing in common with it.
std::vector<Candidate> candidatesFor(const Json& wanted, std::span<const Json> all);

}  // namespace tarni::host
