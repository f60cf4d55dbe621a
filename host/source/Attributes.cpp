#include "host/source/Attributes.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace tarni::host {

namespace {

struct Alias {
  std::string_view name;
  const char* member;
};

constexpr Alias kAliases[] = {
    {"type", "class"},         {"tagName", "class"},          {"className", "class"},
    {"id", "identifier"},      {"resource-id", "identifier"}, {"displayed", "visible"},
    {"textContent", "text"},   {"clickable", "enabled"},      {"focus", "focused"},
    {"content-desc", "label"},
};

// In the order in which they are shown.
constexpr const char* kShown[] = {
    "type",   "name",        "label", "value",   "text",     "id",       "enabled", "visible",
    "hint",   "placeholder", "title", "checked", "selected", "expanded", "focused", "editable",
    "secure", "modal",       "popup", "rows",    "columns",  "row",      "column",
};

std::optional<std::string> nameOf(const Json& description) {
  auto identifier = valueIn(description, "identifier");
  return identifier && !identifier->empty() ? identifier : valueIn(description, "label");
}

// A field's text is its value.
std::optional<std::string> valueOf(const Json& description) {
  if (auto own = valueIn(description, "value")) return own;
  if (auto checked = valueIn(description, "checked")) return checked;
  const bool isEditable = valueIn(description, "editable") == "true";
  return isEditable ? valueIn(description, "text") : std::nullopt;
}

}  // namespace

Rectangle rectangleIn(const Json& description, const char* member) {
  const Json& sides = objectIn(description, member);
  return {numberIn(sides, "x"), numberIn(sides, "y"), numberIn(sides, "width"),
          numberIn(sides, "height")};
}

std::optional<std::string> attributeOf(const Json& description, std::string_view name) {
  if (name == "name") return nameOf(description);
  if (name == "value") return valueOf(description);
  const auto* const alias = std::ranges::find(kAliases, name, &Alias::name);
  const std::string member(alias != std::end(kAliases) ? alias->member : name);
  return valueIn(description, member.c_str());
}

std::vector<std::pair<std::string, std::string>> attributesOf(const Json& description) {
  std::vector<std::pair<std::string, std::string>> attributes;
  for (const char* const name : kShown) {
    if (auto value = attributeOf(description, name))
      attributes.emplace_back(name, *std::move(value));
  }
  return attributes;
}

}  // namespace tarni::host
