// Css: the selectors of CSS that clients of WebDriver send for an identifier, a name or a class:
// #id, .Class, Class, *, [attribute='value'] with =, ^=, $=, *= and ~=, "A B", "A > B" and "A, B".
// Plain values, any thread.
#pragma once

#include <optional>
#include <string>

#include "host/session_client/Selector.h"

namespace tarni::host {

struct Css {
  // The same in XPath, from the element that is searched in.
  std::string xpath;
  // The same as a selector, where it asks for one thing that selectors know.
  std::optional<Selector> selector;

  // Throws InvalidSelector.
  static Css parse(const std::string& text);
};

}  // namespace tarni::host
