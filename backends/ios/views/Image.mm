#include "backends/ios/views/Image.h"

#include "backends/ios/guard/Guard.h"
#include "backends/ios/runtime/Values.h"

namespace tarni::ios {
namespace {

// A context of no extent is an error to UIKit.
bool isDrawable(::CGSize size) { return size.width > 0 && size.height > 0; }

// What `draw` draws into a new context. Null when it raised.
template <typename Draw>
platform::UIImageRef drawn(id subject, const char* operation, ::CGSize size, BOOL opaque,
                           CGFloat scale, Draw draw) {
  const bool isOpen = isDrawable(size) && answered(subject, "UIGraphicsBeginImageContext", [&] {
                        UIGraphicsBeginImageContextWithOptions(size, opaque, scale);
                      });
  if (!isOpen) return nullptr;
  const bool isDrawn = answered(subject, operation, draw);
  ::UIImage* const image = answered(subject, "UIGraphicsGetImageFromCurrentImageContext",
                                    [] { return UIGraphicsGetImageFromCurrentImageContext(); });
  answered(subject, "UIGraphicsEndImageContext", [] { UIGraphicsEndImageContext(); });
  return isDrawn && image ? std::make_shared<Image>(image) : nullptr;
}

}  // namespace

platform::UIImageRef Image::drawnFrom(::UIView* view) {
  const ::CGRect bounds = answered(view, "bounds", [&] { return [view bounds]; });
  const BOOL opaque = answered(view, "isOpaque", [&] { return [view isOpaque]; });
  return drawn(view, "drawViewHierarchyInRect:afterScreenUpdates:", bounds.size, opaque, 0,
               [&] { [view drawViewHierarchyInRect:bounds afterScreenUpdates:NO]; });
}

platform::CGSize Image::size() const {
  return toSize(answered(image_.get(), "size", [&] { return [image_.get() size]; }));
}

double Image::scale() const {
  return answered(
      image_.get(), "scale", [&] { return [image_.get() scale]; }, 1);
}

platform::UIImageRef Image::crop(const platform::CGRect& rect) const {
  const ::CGSize size{static_cast<CGFloat>(rect.size.width),
                      static_cast<CGFloat>(rect.size.height)};
  return drawn(image_.get(), "drawAtPoint:", size, NO, static_cast<CGFloat>(scale()), [&] {
    [image_.get() drawAtPoint:fromPoint({-rect.origin.x, -rect.origin.y})];
  });
}

// In grey, so that how long a text is does not show either.
platform::UIImageRef Image::blurred(std::span<const platform::CGRect> parts) const {
  constexpr CGFloat kGrey = 0.8;
  const platform::CGSize whole = size();
  const ::CGSize extent{static_cast<CGFloat>(whole.width), static_cast<CGFloat>(whole.height)};
  return drawn(image_.get(), "drawAtPoint:", extent, NO, static_cast<CGFloat>(scale()), [&] {
    [image_.get() drawAtPoint:fromPoint({0, 0})];
    [[UIColor colorWithRed:kGrey green:kGrey blue:kGrey alpha:1] setFill];
    for (const platform::CGRect& part : parts) {
      UIRectFill({fromPoint(part.origin),
                  {static_cast<CGFloat>(part.size.width), static_cast<CGFloat>(part.size.height)}});
    }
  });
}

std::vector<std::byte> Image::JPEGRepresentation(double quality) const {
  @autoreleasepool {
    NSData* const data = answered(image_.get(), "UIImageJPEGRepresentation", [&] {
      return UIImageJPEGRepresentation(image_.get(), static_cast<CGFloat>(quality));
    });
    const auto* const bytes = static_cast<const std::byte*>([data bytes]);
    return {bytes, bytes + [data length]};
  }
}

}  // namespace tarni::ios
