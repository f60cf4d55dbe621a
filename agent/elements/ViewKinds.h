// What the kinds of views tell (platform/UIKit/UIControls.h), asked of any view: null for a view
// that is not of the kind. Main thread.
#pragma once

#include <optional>
#include <string>

#include "platform/UIKit/UIView.h"

namespace tarni {

// The view as one of its kinds without taking a share in it.
template <typename Kind>
const Kind* kindOf(const platform::UIViewRef& view) {
  return dynamic_cast<const Kind*>(view.get());
}

// What the kind's getter gives.
template <typename Kind>
std::optional<std::string> ask(const platform::UIViewRef& view,
                               std::optional<std::string> (Kind::*getter)() const) {
  const Kind* const kind = kindOf<Kind>(view);
  return kind ? (kind->*getter)() : std::nullopt;
}

// Of a segmented control; null when no segment is selected, too.
std::optional<std::string> selectedSegmentTitle(const platform::UIViewRef& view);

}  // namespace tarni
