#include "agent/elements/ViewKinds.h"

#include "platform/UIKit/UIControls.h"

namespace tarni {

std::optional<std::string> selectedSegmentTitle(const platform::UIViewRef& view) {
  const auto* const control = kindOf<platform::UISegmentedControl>(view);
  if (!control) return std::nullopt;
  const long selected = control->selectedSegmentIndex();
  if (selected < 0 || selected >= control->numberOfSegments()) return std::nullopt;
  return control->titleForSegmentAtIndex(selected);
}

bool isSecure(const platform::UIViewRef& view) {
  const auto* const field = kindOf<platform::UITextField>(view);
  return field && field->isSecureTextEntry();
}

}  // namespace tarni
