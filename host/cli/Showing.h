// Showing: which elements a person could see, told by the descriptions of all elements. What the
// wire calls displayed is about geometry alone. Main thread.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host {

class Invocation;

// Whether the element of that description is on screen: not hidden, nor on a page that is, and not
// clipped away.
bool isOnScreen(const Json& description);
// Whether a finger meets something else wherever it tries. What takes no touches cannot be told.
bool isCovered(const Json& description);
bool isInSight(const Json& description);  // on screen and not covered

// What `--on-screen` means in every command.
constexpr const char* kOnScreenHelp =
    "only what a person could see: not what is hidden, clipped away or covered";

// What ties an identifier to descriptions, which come with identifiers of their own.
struct Looks {
  std::string text;
  std::string width;
  std::string height;

  static Looks of(Invocation& invocation, const std::string& id);
  auto operator<=>(const Looks&) const = default;
};

class Showing {
 public:
  // Describes all in the window of the element `beside`, which makes earlier identifiers void. With
  // `isOfFind` elements are told about that a find returned, which leaves out what is clipped away.
  Showing(Invocation& invocation, const std::string& beside, bool isOfFind,
          bool (*isShown)(const Json&) = isOnScreen);

  // "true" or "false"; null when no element of these looks is described, "?" when some of them are
  // shown and some are not.
  std::optional<std::string> of(const Looks& looks) const;

 private:
  std::map<Looks, std::string> answers_;
};

}  // namespace tarni::host
