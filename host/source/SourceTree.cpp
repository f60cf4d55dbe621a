#include "host/source/SourceTree.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string_view>

#include "host/source/Attributes.h"

namespace tarni::host {

namespace {

constexpr const char* kRoot = "UIApplication";
constexpr const char* kHandle = "element";

bool isLetter(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_';
}

// Browsers do not read a document with control characters.
std::string withoutControls(std::string text) {
  std::erase_if(text,
                [](unsigned char c) { return c < ' ' && c != '\t' && c != '\n' && c != '\r'; });
  return text;
}

void append(pugi::xml_node node, const char* name, const std::string& value) {
  node.append_attribute(name).set_value(withoutControls(value).c_str());
}

void append(pugi::xml_node node, const char* name, double value) {
  node.append_attribute(name).set_value(static_cast<long long>(std::llround(value)));
}

std::optional<long> handleIn(const Json& element, const char* member) {
  const auto found = element.find(member);
  const bool isNumber = found != element.end() && found->is_number_integer();
  return isNumber ? std::optional(found->get<long>()) : std::nullopt;
}

}  // namespace

SourceTree::SourceTree(const Json& elements, const std::map<Handle, Point>& origins)
    : root_(document_.append_child(kRoot)) {
  for (const auto& element : elements) add(element, origins);
}

void SourceTree::add(const Json& element, const std::map<Handle, Point>& origins) {
  const auto handle = handleIn(element, kHandle);
  if (!handle) return;
  const auto parent = handleIn(element, "parent");
  const auto above = parent ? places_.find(*parent) : places_.end();
  const bool isWindow = above == places_.end();
  const auto type = valueIn(element, "class").value_or("element");
  Place place{(isWindow ? root_ : above->second.node).append_child(tagOf(type).c_str()), {}};
  if (isWindow) {
    const auto origin = origins.find(*handle);
    if (origin != origins.end()) place.origin = origin->second;
  } else {
    place.origin = above->second.origin;
    append(place.node, "index", above->second.children++);
  }
  for (const auto& [name, value] : attributesOf(element)) append(place.node, name.c_str(), value);
  const auto rectangle = rectangleIn(element);
  append(place.node, "x", rectangle.x + place.origin.x);
  append(place.node, "y", rectangle.y + place.origin.y);
  append(place.node, "width", rectangle.width);
  append(place.node, "height", rectangle.height);
  append(place.node, kHandle, static_cast<double>(*handle));
  places_.emplace(*handle, place);
}

std::string SourceTree::xml(bool indented) const {
  std::ostringstream text;
  document_.save(text, "  ", indented ? pugi::format_indent : pugi::format_raw);
  return text.str();
}

std::vector<SourceTree::Handle> SourceTree::find(const std::string& xpath,
                                                 std::optional<Handle> within) const {
  // The library would read up to it.
  if (xpath.find('\0') != std::string::npos) throw InvalidSelector("the XPath has a null in it");
  std::vector<Handle> found;
  try {
    auto nodes = node(within).select_nodes(xpath.c_str());
    nodes.sort();
    for (const auto& result : nodes) {
      if (result.attribute()) throw InvalidSelector("the XPath gives attributes, not elements");
      if (result.node() != root_) found.push_back(handleOf(result.node()));
    }
  } catch (const pugi::xpath_exception& error) {
    throw InvalidSelector(std::string("no XPath 1.0 that gives elements: ") + error.what());
  }
  return found;
}

pugi::xml_node SourceTree::node(std::optional<Handle> handle) const {
  if (!handle) return document_;
  const auto found = places_.find(*handle);
  return found != places_.end() ? found->second.node : pugi::xml_node();
}

SourceTree::Handle SourceTree::handleOf(const pugi::xml_node& node) {
  return static_cast<Handle>(node.attribute(kHandle).as_llong());
}

// "ns::Class" would read as an axis of XPath.
std::string SourceTree::tagOf(std::string className) {
  std::ranges::replace_if(
      className,
      [](char c) {
        return !isLetter(c) && std::isdigit(static_cast<unsigned char>(c)) == 0 && c != '-';
      },
      '.');
  return !className.empty() && isLetter(className.front()) ? className : "_" + className;
}

}  // namespace tarni::host
