#include "backends/ios/views/AccessibilityElement.h"

#include <algorithm>

#include "backends/ios/guard/Collection.h"
#include "backends/ios/runtime/RuntimeClass.h"
#include "backends/ios/runtime/Values.h"

namespace tarni::ios {
namespace {

constexpr NSInteger kMostElements = 10'000;

// The older of the two ways to tell of elements.
NSArray* elementsByIndex(id object) {
  NSMutableArray* const all = [NSMutableArray array];
  const NSInteger count = [object accessibilityElementCount];
  if (count == NSNotFound) return all;
  for (NSInteger i = 0; i < std::min(count, kMostElements); ++i) {
    if (const id element = [object accessibilityElementAtIndex:i]) [all addObject:element];
  }
  return all;
}

bool isOfClassNamed(id object, const char* name) {
  const ::Class cls = objc_lookUpClass(name);
  return cls && isKindOf(object, cls);
}

}  // namespace

NSArray* elementsToldBy(id object) noexcept {
  if (isOfClassNamed(object, "UITableView") || isOfClassNamed(object, "UICollectionView"))
    return nil;
  NSArray* const told = answeredAll(object, "accessibilityElements", [NSObject class],
                                    [&] { return [object accessibilityElements]; });
  if ([told count] > 0) return told;
  return answeredAll(object, "accessibilityElementAtIndex:", [NSObject class],
                     [&] { return elementsByIndex(object); });
}

std::shared_ptr<AccessibilityElement> elementOf(id object) {
  if (auto known = std::dynamic_pointer_cast<AccessibilityElement>(attachmentOf(object))) {
    return known;
  }
  auto made = std::make_shared<AccessibilityElement>(object);
  attach(object, made);
  return made;
}

platform::UIWindowRef AccessibilityElement::window() const {
  const platform::UIViewRef container = superview();
  return container ? container->window() : nullptr;
}

// It tells where it is on the screen.
platform::CGRect AccessibilityElement::frameInWindow() const {
  platform::CGRect rect =
      toRect(ask("accessibilityFrame", [&] { return [object() accessibilityFrame]; }));
  if (const platform::UIWindowRef shown = window()) {
    const platform::CGPoint origin = shown->frame().origin;
    rect.origin.x -= origin.x;
    rect.origin.y -= origin.y;
  }
  return rect;
}

platform::CGRect AccessibilityElement::bounds() const { return {{0, 0}, frameInWindow().size}; }

platform::CGRect AccessibilityElement::frame() const {
  return platform::convertRect(frameInWindow(), nullptr, superview());
}

platform::CGPoint AccessibilityElement::convertPointToWindow(platform::CGPoint point) const {
  const platform::CGPoint origin = frameInWindow().origin;
  return {point.x + origin.x, point.y + origin.y};
}

platform::CGPoint AccessibilityElement::convertPointFromWindow(platform::CGPoint point) const {
  const platform::CGPoint origin = frameInWindow().origin;
  return {point.x - origin.x, point.y - origin.y};
}

bool AccessibilityElement::hasTrait(UIAccessibilityTraits trait) const {
  return ask("accessibilityTraits", [&] { return [object() accessibilityTraits]; }) & trait;
}

bool AccessibilityElement::isUserInteractionEnabled() const {
  return !hasTrait(UIAccessibilityTraitNotEnabled);
}

std::optional<bool> AccessibilityElement::isSelected() const {
  return hasTrait(UIAccessibilityTraitSelected);
}

}  // namespace tarni::ios
