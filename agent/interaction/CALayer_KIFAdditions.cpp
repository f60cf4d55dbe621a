#include "agent/interaction/CALayer_KIFAdditions.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "agent/core/state/MainThread.h"
#include "agent/interaction/CAAnimation_KIFAdditions.h"
#include "platform/Platform.h"

namespace tarni::KIFAdditions {
namespace {

// The parallax effect that follows the device's movement never ends and moves nothing.
bool isOnlyMotionEffect(const std::vector<std::string>& animationKeys) {
  return animationKeys.size() == 1 && animationKeys.front() == "_UIParallaxMotionEffect";
}

bool isInProgress(const platform::CAAnimation& animation, double now) {
  const double completion = KIF_completionTime(animation);
  return animation.beginTime <= now && !std::isinf(completion) && now < completion;
}

bool isAnimating(platform::CALayer& layer) {
  const std::vector<std::string> keys = layer.animationKeys();
  if (keys.empty() || isOnlyMotionEffect(keys) || layer.isHidden()) return false;
  const double now = platform::current().processInfo->currentMediaTime() * KIF_absoluteSpeed(layer);
  return std::ranges::any_of(keys, [&](const std::string& key) {
    const platform::CAAnimation* animation = layer.animationForKey(key);
    return animation && isInProgress(*animation, now);
  });
}

}  // namespace

bool hasAnimations(platform::CALayer& layer) {
  bool result = false;
  performBlockOnDescendentLayers(layer, [&](platform::CALayer& current, bool& stop) {
    result = isAnimating(current);
    stop = result;
  });
  return result;
}

float KIF_absoluteSpeed(platform::CALayer& layer) {
  float speed = 1.0F;
  performBlockOnAncestorLayers(layer,
                               [&](platform::CALayer& current) { speed *= current.speed(); });
  return speed;
}

void performBlockOnDescendentLayers(platform::CALayer& layer, const LayerBlock& block) {
  bool stop = false;
  performBlockOnDescendentLayers(layer, block, stop);
}

void performBlockOnDescendentLayers(platform::CALayer& layer, const LayerBlock& block, bool& stop) {
  assertMainThread();
  std::vector<platform::CALayer*> waiting{&layer};
  while (!waiting.empty() && !stop) {
    platform::CALayer* const current = waiting.back();
    waiting.pop_back();
    block(*current, stop);
    const std::vector<platform::CALayer*> below = current->sublayers();
    waiting.insert(waiting.end(), below.rbegin(), below.rend());
  }
}

void performBlockOnAncestorLayers(platform::CALayer& layer,
                                  const std::function<void(platform::CALayer&)>& block) {
  for (platform::CALayer* current = &layer; current; current = current->superlayer()) {
    block(*current);
  }
}

}  // namespace tarni::KIFAdditions
