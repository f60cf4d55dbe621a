// Attributes: what an element says of itself, under the names that clients of WebDriver use, from
// its description (docs/session.md). Plain values, any thread.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/guard/Json.h"
#include "host/guard/Rectangle.h"
#include "host/session_client/Selector.h"

namespace tarni::host {

// All zeros when it has none.
Rectangle rectangleIn(const Json& description, const char* member = "rect");

// Null when the element has none of that name: "type", "name" (its identifier, or else its label),
// "id", "value", "displayed" and so on; a description's own members have their own names too.
std::optional<std::string> attributeOf(const Json& description, std::string_view name);

// Those that an element has, as its XML shows them, but for where it is: name and value.
std::vector<std::pair<std::string, std::string>> attributesOf(const Json& description);

// The names of all that an element's XML may have.
std::span<const std::string_view> attributeNames();

// The member of a selector that asks for that attribute alone; null for one of which none does.
Selector::Member Selector::*memberFor(std::string_view attribute);

}  // namespace tarni::host
