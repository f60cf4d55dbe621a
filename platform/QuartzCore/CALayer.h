// Layers and animations: identity tags, the highlight border, speeds. Main thread.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Foundation/Guid.h"

namespace tarni::platform {

// Components from 0 to 1.
struct CGColor {
  double red = 0, green = 0, blue = 0, alpha = 0;
  bool operator==(const CGColor&) const = default;
};

// One animation of a layer, times in seconds. A repeat count may be infinite.
struct CAAnimation {
  double beginTime = 0;
  double duration = 0;
  float repeatCount = 0;
  double repeatDuration = 0;
};

// A key under which the agent tags the layers of views, and its place among these keys.
struct TagKey {
  std::size_t place;
  std::string_view name;
};

// The tags of one layer, where the platform has no room for them itself.
class LayerTags {
 public:
  Guid operator[](const TagKey& key) const { return tags_[key.place]; }
  Guid& operator[](const TagKey& key) { return tags_[key.place]; }

 private:
  std::array<Guid, 2> tags_;
};

class CALayer {
 public:
  virtual ~CALayer() = default;

  // The agent's tags, which live and die with the layer: key-value coding with their texts where
  // the platform has that. None when the layer was never tagged under the key.
  virtual Guid tag(const TagKey& key) const = 0;
  virtual void setTag(Guid guid, const TagKey& key) = 0;

  // Key-value coding with text values; they live and die with the layer. Null when the key was
  // never set. The text is valid until the key is set again.
  virtual const std::string* valueForKey(std::string_view key) const = 0;
  virtual void setValueForKey(std::string value, std::string_view key) = 0;

  // Points; drawn inside the layer's bounds, above its content.
  virtual double borderWidth() const = 0;
  virtual void setBorderWidth(double width) = 0;
  // Null for the colour of a layer that never got one (opaque black).
  virtual std::optional<CGColor> borderColor() const = 0;
  // A colour that this layer has answered comes back as it was, whatever more than its components
  // the platform knows of it.
  virtual void setBorderColor(std::optional<CGColor> color) = 0;

  virtual bool isHidden() const = 0;
  virtual float speed() const = 0;
  virtual void setSpeed(float speed) = 0;

  virtual CALayer* superlayer() const = 0;
  // Back to front.
  virtual std::vector<CALayer*> sublayers() const = 0;
  virtual std::vector<std::string> animationKeys() const = 0;
  // Null for an unknown key.
  virtual const CAAnimation* animationForKey(std::string_view key) const = 0;
};

class CATransaction {
 public:
  virtual ~CATransaction() = default;
  // Draws what waits to be drawn, now.
  virtual void flush() = 0;
};

}  // namespace tarni::platform
