#include "backends/headless/Layer.h"

#include <algorithm>

#include "backends/headless/View.h"

namespace tarni::headless {
namespace {

template <typename Pairs>
auto find(Pairs& pairs, std::string_view key) {
  return std::ranges::find(pairs, key,
                           [](const auto& pair) -> std::string_view { return pair.first; });
}

}  // namespace

bool Layer::isHidden() const {
  return view_.isHidden();
}

platform::CALayer* Layer::superlayer() const {
  return view_.parent() ? &view_.parent()->layer() : nullptr;
}

std::vector<platform::CALayer*> Layer::sublayers() const {
  std::vector<platform::CALayer*> layers;
  layers.reserve(view_.subviews().size());
  for (const platform::UIViewRef& view : view_.subviews()) layers.push_back(&view->layer());
  return layers;
}

std::vector<std::string> Layer::animationKeys() const {
  std::vector<std::string> keys;
  for (const auto& [key, animation] : animations_) keys.push_back(key);
  return keys;
}

const platform::CAAnimation* Layer::animationForKey(std::string_view key) const {
  const auto found = find(animations_, key);
  return found == animations_.end() ? nullptr : found->second.get();
}

void Layer::addAnimation(platform::CAAnimation animation, std::string_view key) {
  removeAnimation(key);
  animations_.emplace_back(key, std::make_unique<platform::CAAnimation>(animation));
}

void Layer::removeAnimation(std::string_view key) {
  const auto found = find(animations_, key);
  if (found != animations_.end()) animations_.erase(found);
}

}  // namespace tarni::headless
