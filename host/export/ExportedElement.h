// ExportedElement: how clients of WebDriver find what a session's locators say. Plain value.
#pragma once

#include <string>

#include "host/guard/Json.h"

namespace tarni::host {

struct ExportedElement {
  enum class By { Id, ClassName, XPath };

  By by = By::XPath;
  std::string value;
  // As it was recorded.
  bool isShown = true;
  bool isFocused = false;

  // From the parameters of `element.find`.
  static ExportedElement fromFind(const Json& find);
  // From the description of a step's element, by the best of its locators. Throws
  // std::invalid_argument when it has none.
  static ExportedElement fromElement(const Json& element);
  bool operator==(const ExportedElement&) const = default;
};

}  // namespace tarni::host
