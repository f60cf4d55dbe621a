// Between Foundation's values and those of the seam. Any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "backends/ios/Apple.h"
#include "platform/QuartzCore/CGGeometry.h"

namespace tarni::ios {

// Autoreleased. Bytes that are not UTF-8 are read as Latin-1: no text is lost.
NSString* toNSString(std::string_view text);
// Null for nil, and for what the application answers although it is not a string.
std::optional<std::string> toText(id string);
// Empty for these.
std::string toTextOrEmpty(id string);

inline platform::CGPoint toPoint(::CGPoint point) { return {point.x, point.y}; }
inline ::CGPoint fromPoint(platform::CGPoint point) {
  return {static_cast<CGFloat>(point.x), static_cast<CGFloat>(point.y)};
}
inline platform::CGSize toSize(::CGSize size) { return {size.width, size.height}; }
inline platform::CGRect toRect(::CGRect rect) { return {toPoint(rect.origin), toSize(rect.size)}; }

}  // namespace tarni::ios
