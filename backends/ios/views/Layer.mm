#include "backends/ios/views/Layer.h"

#include "backends/ios/guard/Collection.h"
#include "backends/ios/guard/Guard.h"
#include "backends/ios/runtime/RuntimeClass.h"
#include "backends/ios/runtime/Values.h"

namespace tarni::ios {
namespace {

// Two components are grey and alpha, four are red, green, blue and alpha. What has others is
// answered as clear: it is a colour all the same.
std::optional<platform::CGColor> componentsOf(CGColorRef color) {
  if (!color) return std::nullopt;
  const std::size_t count = CGColorGetNumberOfComponents(color);
  const CGFloat* const values = CGColorGetComponents(color);
  if (values && count == 2) return platform::CGColor{values[0], values[0], values[0], values[1]};
  if (values && count == 4) return platform::CGColor{values[0], values[1], values[2], values[3]};
  return platform::CGColor{};
}

CGColorRef colorOf(const std::optional<platform::CGColor>& color) {
  if (!color) return nullptr;
  return [[UIColor colorWithRed:static_cast<CGFloat>(color->red)
                          green:static_cast<CGFloat>(color->green)
                           blue:static_cast<CGFloat>(color->blue)
                          alpha:static_cast<CGFloat>(color->alpha)] CGColor];
}

}  // namespace

std::shared_ptr<Layer> Layer::of(::CALayer* layer) {
  if (!layer) return nullptr;
  if (auto known = std::dynamic_pointer_cast<Layer>(attachmentOf(layer))) return known;
  auto made = std::make_shared<Layer>(layer);
  attach(layer, made);
  return made;
}

Layer& Layer::none() {
  static auto& none = *new Layer(nil);
  return none;
}

// --- tags

const std::string* Layer::valueForKey(std::string_view key) const {
  const auto known = values_.find(key);
  if (known != values_.end()) return &known->second;
  const id value =
      answered(layer_, "valueForKey:", [&] { return [layer_ valueForKey:toNSString(key)]; });
  if (!isKindOf(value, [NSString class])) return nullptr;
  return &values_.emplace(key, toTextOrEmpty(value)).first->second;
}

// A layer of the application's that takes no foreign keys still has its tag here.
void Layer::setTag(platform::Guid guid, const platform::TagKey& key) {
  if (!layer_) return;
  setValueForKey(guid.text(), key.name);
  tags_[key] = guid;
}

void Layer::setValueForKey(std::string value, std::string_view key) {
  if (!layer_) return;
  answered(layer_,
           "setValue:forKey:", [&] { [layer_ setValue:toNSString(value) forKey:toNSString(key)]; });
  values_.insert_or_assign(std::string(key), std::move(value));
}

// --- border

double Layer::borderWidth() const {
  return answered(layer_, "borderWidth", [&] { return [layer_ borderWidth]; });
}

void Layer::setBorderWidth(double width) {
  guarded([&] { [layer_ setBorderWidth:static_cast<CGFloat>(width)]; });
}

std::optional<platform::CGColor> Layer::borderColor() const {
  const CGColorRef color = answered(layer_, "borderColor", [&] { return [layer_ borderColor]; });
  const std::optional<platform::CGColor> seen = componentsOf(color);
  if (seen && seen != drawnBorderColor_) ownBorderColor_ = {*seen, Owned<id>((id)color)};
  return seen;
}

void Layer::setBorderColor(std::optional<platform::CGColor> color) {
  const bool isOwn = ownBorderColor_.native && color == ownBorderColor_.answered;
  drawnBorderColor_ = isOwn ? std::nullopt : color;
  guarded([&] {
    const id own = ownBorderColor_.native.get();
    [layer_ setBorderColor:isOwn ? (CGColorRef)own : colorOf(color)];
  });
}

// --- state

bool Layer::isHidden() const {
  return answered(layer_, "isHidden", [&]() -> bool { return [layer_ isHidden]; });
}

float Layer::speed() const {
  return layer_ ? answered(
                      layer_, "speed", [&] { return [layer_ speed]; }, 1.0F)
                : 1.0F;
}

void Layer::setSpeed(float speed) {
  guarded([&] { [layer_ setSpeed:speed]; });
}

// --- the tree, kept by the layers themselves

platform::CALayer* Layer::superlayer() const {
  ::CALayer* const above = answered(layer_, "superlayer", [&] { return [layer_ superlayer]; });
  return Layer::of(above).get();
}

std::vector<platform::CALayer*> Layer::sublayers() const {
  std::vector<platform::CALayer*> below;
  NSArray* const layers =
      answeredAll(layer_, "sublayers", [::CALayer class], [&] { return [layer_ sublayers]; });
  for (::CALayer* layer in layers) below.push_back(Layer::of(layer).get());
  return below;
}

std::vector<std::string> Layer::animationKeys() const {
  std::vector<std::string> keys;
  NSArray* const all = answeredAll(layer_, "animationKeys", [NSString class],
                                   [&] { return [layer_ animationKeys]; });
  for (NSString* key in all) keys.push_back(toTextOrEmpty(key));
  return keys;
}

const platform::CAAnimation* Layer::animationForKey(std::string_view key) const {
  ::CAAnimation* const animation = answered(
      layer_, "animationForKey:", [&] { return [layer_ animationForKey:toNSString(key)]; });
  if (!animation) return nullptr;
  platform::CAAnimation& copy = animations_[std::string(key)];
  copy = answered(animation, "beginTime", [&] {
    return platform::CAAnimation{[animation beginTime],
                                 [animation duration],
                                 [animation repeatCount],
                                 [animation repeatDuration]};
  });
  return &copy;
}

}  // namespace tarni::ios
