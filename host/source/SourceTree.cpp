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
constexpr const char* kIndex = "index";

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

void set(pugi::xml_node node, const char* name, double value) {
  node.attribute(name).set_value(static_cast<long long>(std::llround(value)));
}

std::optional<long> integerIn(const Json& element, const char* member) {
  const auto found = element.find(member);
  const bool isNumber = found != element.end() && found->is_number_integer();
  return isNumber ? std::optional(found->get<long>()) : std::nullopt;
}

bool isVisible(const pugi::xml_node& node) {
  return std::string_view(node.attribute("visible").value()) == "true";
}

std::vector<pugi::xml_node> withAllBelow(pugi::xml_node node) {
  std::vector<pugi::xml_node> all{node};
  for (std::size_t at = 0; at < all.size(); ++at) {
    const auto children = all[at].children();
    all.insert(all.end(), children.begin(), children.end());
  }
  return all;
}

int childrenOf(const pugi::xml_node& node) {
  const auto last = node.last_child();
  return last ? last.attribute(kIndex).as_int(-1) + 1 : 0;
}

// By what they say of their place; those of pages say nothing and stay.
void sortChildren(pugi::xml_node parent) {
  std::vector<std::pair<int, pugi::xml_node>> children;
  for (const auto& child : parent.children()) {
    children.emplace_back(child.attribute(kIndex).as_int(), child);
  }
  const auto index = [](const auto& child) { return child.first; };
  if (std::ranges::is_sorted(children, {}, index)) return;
  std::ranges::stable_sort(children, {}, index);
  for (const auto& child : children) parent.append_move(child.second);
}

}  // namespace

SourceTree::SourceTree(const Json& elements) : root_(document_.append_child(kRoot)) {
  for (const auto& element : elements) add(element);
}

bool SourceTree::update(const Json& changed, const Json& gone) {
  std::unordered_set<Handle> parents;
  for (const auto& element : changed) {
    const auto parent = integerIn(element, "parent");
    const bool isPlaced = !parent || element.contains(kIndex);
    if (!isPlaced && placeOf(integerIn(element, kHandle)) == nullptr) return false;
    add(element);
    if (isPlaced && parent) parents.insert(*parent);
  }
  for (const auto& handle : gone) {
    if (handle.is_number_integer()) remove(handle.get<Handle>());
  }
  for (const Handle parent : parents) {
    if (const auto* const place = placeOf(parent)) sortChildren(place->node);
  }
  return true;
}

// One that is known may stand elsewhere now.
void SourceTree::add(const Json& element) {
  const auto handle = integerIn(element, kHandle);
  if (!handle) return;
  const auto* const above = placeOf(integerIn(element, "parent"));
  auto parent = above != nullptr ? above->node : root_;
  const auto corner = above != nullptr ? above->corner : Point();
  const auto type = valueIn(element, "class").value_or("element");
  const auto [found, isNew] = places_.try_emplace(*handle);
  auto& place = found->second;
  if (isNew) {
    const int index = childrenOf(parent);
    place = {parent.append_child(tagOf(type).c_str()), {}, corner};
    if (above != nullptr) append(place.node, kIndex, index);
  } else if (above != nullptr && place.node.parent() != parent && parent.append_move(place.node)) {
    moveTo(place.node, corner);
  }
  describe(element, *handle, place);
}

void SourceTree::describe(const Json& element, Handle handle, Place& place) {
  auto& node = place.node;
  const auto index = integerIn(element, kIndex).value_or(node.attribute(kIndex).as_llong(-1));
  node.remove_attributes();
  if (index >= 0) append(node, kIndex, static_cast<double>(index));
  for (const auto& [name, value] : attributesOf(element)) append(node, name.c_str(), value);
  const auto rectangle = rectangleIn(element);
  place.inWindow = {rectangle.x, rectangle.y};
  append(node, "x", rectangle.x + place.corner.x);
  append(node, "y", rectangle.y + place.corner.y);
  append(node, "width", rectangle.width);
  append(node, "height", rectangle.height);
  append(node, kHandle, static_cast<double>(handle));
}

// With all that stands in it.
void SourceTree::remove(Handle handle) {
  const auto* const place = placeOf(handle);
  if (place == nullptr) return;
  auto node = place->node;
  for (const auto& gone : withAllBelow(node)) places_.erase(handleOf(gone));
  node.parent().remove_child(node);
}

void SourceTree::moveTo(pugi::xml_node node, Point corner) {
  for (auto& moved : withAllBelow(node)) {
    auto* const place = placeOf(handleOf(moved));
    if (place == nullptr) continue;
    place->corner = corner;
    set(moved, "x", place->inWindow.x + corner.x);
    set(moved, "y", place->inWindow.y + corner.y);
  }
}

void SourceTree::arrange(const std::vector<Window>& windows) {
  blocked_.clear();
  for (const auto& window : windows) {
    if (!window.takesInput) blocked_.insert(window.element);
    const auto* const place = placeOf(window.element);
    if (place == nullptr) continue;
    if (place->corner != window.corner) moveTo(place->node, window.corner);
    root_.append_move(place->node);
  }
}

void SourceTree::putSeenFirst(std::vector<Handle>& elements) const {
  std::ranges::stable_sort(elements, {}, [this](Handle element) { return distance(element); });
}

// From the person.
int SourceTree::distance(Handle element) const {
  auto at = node(element);
  if (!isVisible(at)) return 2;
  while (at.parent() && at.parent() != root_) at = at.parent();
  return blocked_.contains(handleOf(at)) ? 1 : 0;
}

SourceTree::Place* SourceTree::placeOf(std::optional<Handle> handle) {
  const auto found = handle ? places_.find(*handle) : places_.end();
  return found != places_.end() ? &found->second : nullptr;
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
      if (result.node().type() != pugi::node_element) {
        throw InvalidSelector("the XPath gives attributes or the document, not elements");
      }
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
