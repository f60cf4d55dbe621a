// Css: the selectors of CSS that clients of WebDriver send for an identifier, a name or a class:
// #id, .Class, Class, *, [attribute='value'] with =, ^=, $=, *= and ~=, "A B", "A > B" and "A, B".
// Plain values, any thread.
#pragma once

#include <string>
#include <vector>

#include "host/session_client/Selector.h"

namespace tarni::host {

struct Css {
  // The same in XPath, from the element that is searched in.
  std::string xpath;
  // The same as selectors, where it asks one element for what they know: the first of these of
  // which there is any.
  std::vector<Selector> selectors;

  // Throws InvalidSelector.
  static Css parse(const std::string& text);
};

}  // namespace tarni::host
