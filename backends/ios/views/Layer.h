// Layer: a CALayer of the application's, the same one for as long as that lives. Main thread.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "backends/ios/Apple.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/runtime/Attachment.h"
#include "platform/QuartzCore/CALayer.h"

namespace tarni::ios {

class Layer : public platform::CALayer, public Attachment {
 public:
  // Null for nil.
  static std::shared_ptr<Layer> of(::CALayer* layer);
  // What stands for the layer of a view that has none: it takes nothing.
  static Layer& none();

  explicit Layer(::CALayer* layer) : layer_(layer) {}
  void objectIsGoing() noexcept override { layer_ = nil; }

  platform::Guid tag(const platform::TagKey& key) const override { return tags_[key]; }
  void setTag(platform::Guid guid, const platform::TagKey& key) override;
  const std::string* valueForKey(std::string_view key) const override;
  void setValueForKey(std::string value, std::string_view key) override;
  double borderWidth() const override;
  void setBorderWidth(double width) override;
  std::optional<platform::CGColor> borderColor() const override;
  void setBorderColor(std::optional<platform::CGColor> color) override;
  bool isHidden() const override;
  float speed() const override;
  void setSpeed(float speed) override;
  platform::CALayer* superlayer() const override;
  std::vector<platform::CALayer*> sublayers() const override;
  std::vector<std::string> animationKeys() const override;
  const platform::CAAnimation* animationForKey(std::string_view key) const override;

 private:
  // A colour of the application's: a pattern, or one of another colour space, is more than what the
  // agent is told of it.
  struct OwnColor {
    platform::CGColor answered;
    Owned<id> native;
  };

  ::CALayer* layer_;
  mutable OwnColor ownBorderColor_;
  std::optional<platform::CGColor> drawnBorderColor_;  // the agent's
  // What was given, so that no walk asks the layer for it. Nobody else writes these keys.
  platform::LayerTags tags_;
  mutable std::map<std::string, std::string, std::less<>> values_;
  mutable std::map<std::string, platform::CAAnimation, std::less<>> animations_;
};

}  // namespace tarni::ios
