#include "host/source/Attributes.h"

#include <algorithm>
#include <array>
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

// In the order in which they are shown; then where it is, and its place in the tree.
constexpr std::array<std::string_view, 29> kNames = {
    "type",   "name",        "label",  "value",   "text",     "id",       "enabled", "visible",
    "hint",   "placeholder", "title",  "checked", "selected", "expanded", "focused", "editable",
    "secure", "modal",       "popup",  "rows",    "columns",  "row",      "column",  "x",
    "y",      "width",       "height", "index",   "element"};
constexpr auto kShown = std::span(kNames).first<23>();

struct AskedFor {
  std::string_view attribute;
  Selector::Member Selector::*member;
};
constexpr AskedFor kAskedFor[] = {{"id", &Selector::identifier},
                                  {"label", &Selector::label},
                                  {"placeholder", &Selector::placeholder},
                                  {"text", &Selector::text}};

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
  for (const auto name : kShown) {
    if (auto value = attributeOf(description, name))
      attributes.emplace_back(name, *std::move(value));
  }
  return attributes;
}

std::span<const std::string_view> attributeNames() {
  return kNames;
}

Selector::Member Selector::*memberFor(std::string_view attribute) {
  const auto* const found = std::ranges::find(kAskedFor, attribute, &AskedFor::attribute);
  return found != std::end(kAskedFor) ? found->member : nullptr;
}

}  // namespace tarni::host
