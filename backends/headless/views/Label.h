// Label: a UILabel. It takes no touches. Main thread.
#pragma once

#include <optional>
#include <string>

#include "backends/headless/View.h"
#include "backends/headless/drawing/TextStyle.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::headless {

class Label : public View, public platform::UILabel {
 public:
  explicit Label(std::optional<std::string> text = std::nullopt,
                 platform::Class cls = platform::uikit::UILabel);

  std::optional<std::string> labelText() const override { return text_; }
  void setText(std::optional<std::string> text) { setContent(text_, std::move(text)); }
  const TextStyle& textStyle() const { return style_; }
  void setTextStyle(const TextStyle& style) { style_ = style; }

  void drawContent(Canvas& canvas) const override;

 private:
  std::optional<std::string> text_;
  TextStyle style_;
};

}  // namespace tarni::headless
