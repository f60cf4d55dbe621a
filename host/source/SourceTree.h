// SourceTree: the elements of a program as an XML document, which is shown, and in which XPath
// looks. A tag is a class; what XML cannot name or hold is replaced or left out. One thread at a
// time.
#pragma once

#include <map>
#include <optional>
#include <pugixml.hpp>
#include <stdexcept>
#include <string>
#include <unordered_map>
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
  };

  // `elements` are those of `tree.get`, parents first. `origins` say by window what its own corner
  // is called; its elements' places are counted from there, in a window without one from that
  // window.
  explicit SourceTree(const Json& elements, const std::map<Handle, Point>& origins = {});

  std::string xml(bool indented = false) const;

  // In the order of the document. An expression is evaluated at the element `within`, or at the
  // root. Throws InvalidSelector.
  std::vector<Handle> find(const std::string& xpath,
                           std::optional<Handle> within = std::nullopt) const;

  // The element of that handle or, without one, the root; a null node when it is not there.
  pugi::xml_node node(std::optional<Handle> handle) const;
  static Handle handleOf(const pugi::xml_node& node);
  // What elements of that class are called.
  static std::string tagOf(std::string className);

 private:
  void add(const Json& element, const std::map<Handle, Point>& origins);

  struct Place {
    pugi::xml_node node;
    Point origin;
    int children = 0;
  };

  pugi::xml_document document_;
  pugi::xml_node root_;
  std::unordered_map<Handle, Place> places_;
};

}  // namespace tarni::host
