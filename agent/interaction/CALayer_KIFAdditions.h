// CALayer(KIFAdditions): walks over layers, and whether one is animating. Main thread.
#pragma once

#include <functional>

#include "platform/QuartzCore/CALayer.h"

namespace tarni::KIFAdditions {

// True when the layer or one below it has an animation that runs now and will end. Kept for
// callers from outside: gestures do not wait for it.
bool hasAnimations(platform::CALayer& layer);

// The product of the speeds of the layer and all its ancestors.
float KIF_absoluteSpeed(platform::CALayer& layer);

// A block that is given a layer and may set the flag to end the walk.
using LayerBlock = std::function<void(platform::CALayer&, bool& stop)>;

// The layer itself, then everything below it, parents before children.
void performBlockOnDescendentLayers(platform::CALayer& layer, const LayerBlock& block);
void performBlockOnDescendentLayers(platform::CALayer& layer, const LayerBlock& block, bool& stop);

// The layer itself, then each of its ancestors outwards.
void performBlockOnAncestorLayers(platform::CALayer& layer,
                                  const std::function<void(platform::CALayer&)>& block);

}  // namespace tarni::KIFAdditions
