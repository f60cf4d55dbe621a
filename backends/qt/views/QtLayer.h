// QtLayer: the layer of one view. It keeps the identity tags and the border, which the toolkit
// knows nothing about; the border is drawn by something of the agent above the view. There is one
// for each view, and hardly any has more than its tags, so what else there is lies elsewhere. GUI
// thread.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "backends/posix/LayerValues.h"
#include "backends/qt/drawing/QtBorder.h"
#include "platform/QuartzCore/CALayer.h"

namespace tarni::qt {

class QtViewCore;

class QtLayer final : public platform::CALayer {
 public:
  // The layer is a member of its view.
  explicit QtLayer(const QtViewCore& view) : view_(view) {}
  QtLayer(const QtLayer&) = delete;
  QtLayer& operator=(const QtLayer&) = delete;

  platform::Guid tag(const platform::TagKey& key) const override { return tags_[key]; }
  void setTag(platform::Guid guid, const platform::TagKey& key) override { tags_[key] = guid; }
  const std::string* valueForKey(std::string_view key) const override {
    return more_ ? more_->values.find(key) : nullptr;
  }
  void setValueForKey(std::string value, std::string_view key) override {
    more().values.set(std::move(value), key);
  }

  double borderWidth() const override { return more_ ? more_->borderWidth : 0; }
  void setBorderWidth(double width) override;
  std::optional<platform::CGColor> borderColor() const override {
    return more_ ? more_->borderColor : std::nullopt;
  }
  void setBorderColor(std::optional<platform::CGColor> color) override;

  bool isHidden() const override;
  float speed() const override { return more_ ? more_->speed : 1; }
  void setSpeed(float speed) override { more().speed = speed; }
  platform::CALayer* superlayer() const override;
  std::vector<platform::CALayer*> sublayers() const override;
  // The toolkit's animations move the widgets themselves.
  std::vector<std::string> animationKeys() const override { return {}; }
  const platform::CAAnimation* animationForKey(std::string_view) const override { return nullptr; }

 private:
  struct More {
    posix::LayerValues values;
    double borderWidth = 0;
    std::optional<platform::CGColor> borderColor;
    float speed = 1;
    std::unique_ptr<QtBorder> border;
  };

  More& more();
  void showBorder();

  const QtViewCore& view_;
  platform::LayerTags tags_;
  std::unique_ptr<More> more_;
};

}  // namespace tarni::qt
