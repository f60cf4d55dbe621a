// QtLayer: the layer of one view. It keeps the identity tags and the border, which the toolkit
// knows nothing about; the border is drawn by something of the agent above the view. GUI thread.
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

  const std::string* valueForKey(std::string_view key) const override { return values_.find(key); }
  void setValueForKey(std::string value, std::string_view key) override {
    values_.set(std::move(value), key);
  }

  double borderWidth() const override { return borderWidth_; }
  void setBorderWidth(double width) override;
  std::optional<platform::CGColor> borderColor() const override { return borderColor_; }
  void setBorderColor(std::optional<platform::CGColor> color) override;

  bool isHidden() const override;
  float speed() const override { return speed_; }
  void setSpeed(float speed) override { speed_ = speed; }
  platform::CALayer* superlayer() const override;
  std::vector<platform::CALayer*> sublayers() const override;
  // The toolkit's animations move the widgets themselves.
  std::vector<std::string> animationKeys() const override { return {}; }
  const platform::CAAnimation* animationForKey(std::string_view) const override { return nullptr; }

 private:
  void showBorder();

  const QtViewCore& view_;
  double borderWidth_ = 0;
  posix::LayerValues values_;
  std::optional<platform::CGColor> borderColor_;
  float speed_ = 1;
  std::unique_ptr<QtBorder> border_;
};

}  // namespace tarni::qt
