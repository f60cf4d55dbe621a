// The green border that shows a person which element is meant. Main thread.
#pragma once

#include <optional>

#include "platform/UIKit/UIView.h"

namespace tarni::Highlight {

// The border of a layer; a null colour is the one of a layer that never got one.
struct Border {
  double width = 0;
  std::optional<platform::CGColor> color;
  bool operator==(const Border&) const = default;
};

// 4.0 wide in pure green.
inline constexpr double kHighlightWidth = 4.0;
inline constexpr platform::CGColor kHighlightColor{0, 1, 0, 1};

// True when the view's border looks like the highlight, whoever drew it.
bool isHighlighted(const platform::UIViewRef& view);

// The same for a border that nobody is going to take off: no highlight of the view is on.
bool isLeftover(const platform::UIViewRef& view);

// The border that the application gave the view, also while it is highlighted.
Border ownBorder(const platform::UIViewRef& view);

// Shows the highlight and brings the view's own border back 1.0 s later, unless the view has gone
// or its highlight was taken off before. Highlighting again starts the second anew.
void highlightView(const platform::UIViewRef& view);

// Takes the highlight off: the view's own border comes back, or none when nobody knows it.
void deHighlightView(const platform::UIViewRef& view);

// The same with the border to put in its place.
void deHighlightView(const platform::UIViewRef& view, double borderWidth,
                     std::optional<platform::CGColor> borderColor);

}  // namespace tarni::Highlight
