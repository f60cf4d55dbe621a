// SourceTree: the elements of a program as an XML document, which is shown, and in which XPath
// looks. A tag is a class; what XML cannot name or hold is replaced or left out. One thread at a
// time.
#pragma once

#include <optional>
#include <pugixml.hpp>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "host/guard/Json.h"

namespace tarni::host {

// An expression that is none, or that gives no elements; the text says where and why.
class InvalidSelector : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class SourceTree {
 public:
  using Handle = long;
  struct Point {
    double x = 0, y = 0;
    bool operator==(const Point&) const = default;
  };

  // One that stands on the screen.
  struct Window {
    Handle element = 0;
    Point corner;  // what it is called
    bool takesInput = true;
  };

  // `elements` are those of the whole of `tree.get`, parents first.
  explicit SourceTree(const Json& elements);

  // What `tree.get` says has changed since. False when it does not say where that is to stand, as
  // of new elements of a page: the tree is of no use any more then.
  bool update(const Json& changed, const Json& gone);
  // The windows in their order. Places are counted from what the corners are called, in a window
  // that is not among them from that window.
  void arrange(const std::vector<Window>& windows);

  std::string xml(bool indented = false) const;

  // In the order of the document. An expression is evaluated at the element `within`, or at the
  // root. Throws InvalidSelector.
  std::vector<Handle> find(const std::string& xpath,
                           std::optional<Handle> within = std::nullopt) const;

  // Those first that are on the screen and can be reached, then what a modal window keeps the
  // person from, then what is hidden; otherwise as they were.
  void putSeenFirst(std::vector<Handle>& elements) const;

  // The element of that handle or, without one, the root; a null node when it is not there.
  pugi::xml_node node(std::optional<Handle> handle) const;
  static Handle handleOf(const pugi::xml_node& node);
  // What elements of that class are called.
  static std::string tagOf(std::string className);

 private:
  struct Place {
    pugi::xml_node node;
    Point inWindow;
    Point corner;  // of its window
  };

  void add(const Json& element);
  void describe(const Json& element, Handle handle, Place& place);
  void remove(Handle handle);
  void moveTo(pugi::xml_node node, Point corner);
  Place* placeOf(std::optional<Handle> handle);
  int distance(Handle element) const;

  pugi::xml_document document_;
  pugi::xml_node root_;
  std::unordered_map<Handle, Place> places_;
  std::unordered_set<Handle> blocked_;  // windows that take no input
};

}  // namespace tarni::host
