// Layer: the layer that is part of every View. Main thread.
#pragma once

#include <memory>
#include <utility>

#include "backends/posix/LayerValues.h"
#include "platform/QuartzCore/CALayer.h"

namespace tarni::headless {

class View;

class Layer : public platform::CALayer {
 public:
  explicit Layer(View& view) : view_(view) {}

  platform::Guid tag(const platform::TagKey& key) const override { return tags_[key]; }
  void setTag(platform::Guid guid, const platform::TagKey& key) override { tags_[key] = guid; }
  const std::string* valueForKey(std::string_view key) const override { return values_.find(key); }
  void setValueForKey(std::string value, std::string_view key) override {
    values_.set(std::move(value), key);
  }

  double borderWidth() const override { return borderWidth_; }
  void setBorderWidth(double width) override { borderWidth_ = width; }
  std::optional<platform::CGColor> borderColor() const override { return borderColor_; }
  void setBorderColor(std::optional<platform::CGColor> color) override { borderColor_ = color; }

  bool isHidden() const override;
  float speed() const override { return speed_; }
  void setSpeed(float speed) override { speed_ = speed; }

  platform::CALayer* superlayer() const override;
  std::vector<platform::CALayer*> sublayers() const override;
  std::vector<std::string> animationKeys() const override;
  const platform::CAAnimation* animationForKey(std::string_view key) const override;

  // Points. Rounds the background and the border, and clips the subviews of a clipping view.
  double cornerRadius() const { return cornerRadius_; }
  void setCornerRadius(double radius) { cornerRadius_ = radius; }

  // Replaces an animation of the same key. It stays until it is removed: a headless layer shows
  // the end of an animation at once, and only tells that there is one.
  void addAnimation(platform::CAAnimation animation, std::string_view key);
  void removeAnimation(std::string_view key);

 private:
  View& view_;
  double borderWidth_ = 0;
  platform::LayerTags tags_;
  posix::LayerValues values_;
  double cornerRadius_ = 0;
  std::optional<platform::CGColor> borderColor_;
  float speed_ = 1;
  // By address, which animationForKey hands out.
  std::vector<std::pair<std::string, std::unique_ptr<platform::CAAnimation>>> animations_;
};

}  // namespace tarni::headless
