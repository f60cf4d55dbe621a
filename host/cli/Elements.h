// Elements as the session channel describes them: what of a description is said to a person, and
// how. Main thread.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host {

class Invocation;

// Whether a word is one, and not what an element looks like.
bool isHandle(const std::string& word);
// The handle that a person wrote. Throws NotFound for what is none.
long handleOf(const std::string& word);
// That of a description; throws WireError when it has none.
long handleOf(const Json& description);

// "80x24" and "10,5"; empty without a rectangle.
std::string sizeIn(const Json& description, const char* rectangle = "rect");
std::string placeIn(const Json& description, const char* rectangle = "rect");
// The state in words, "checked,disabled"; what is usual is not said.
std::string stateIn(const Json& description);

// Adds the titles of their windows, where the program shows several.
void addWindows(Invocation& invocation, std::span<Json> elements);

// A table of the elements, a row each.
void printElements(const std::vector<Json>& elements);
// How many elements are listed to be chosen from.
inline constexpr std::size_t kMostListed = 20;
// The same on standard error, without the columns that are the same for all; `areNumbered` is
// whether --nth may choose one.
void printDifferences(const std::vector<Json>& elements, bool areNumbered);

// All members of an object, a line each.
void printMembers(const Json& object);

}  // namespace tarni::host
