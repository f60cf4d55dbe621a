// Button: a UIButton with a title. The title stands in a UIButtonLabel below it. Main thread.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "backends/headless/views/Control.h"
#include "backends/headless/views/Label.h"

namespace tarni::headless {

class Button : public Control, public platform::UIButton {
 public:
  explicit Button(std::optional<std::string> title = std::nullopt,
                  platform::Class cls = platform::uikit::UIButton);

  std::optional<std::string> currentTitle() const override { return title_; }
  // A button that never had a title has no label.
  void setTitle(std::optional<std::string> title);
  // Null while there is none.
  const std::shared_ptr<Label>& titleLabel() const { return label_; }
  void setTitleStyle(const TextStyle& style);

  void drawContent(Canvas& canvas) const override;

 protected:
  void layoutSubviews() override;
  double touchMargin() const override { return 70; }

 private:
  std::optional<std::string> title_;
  TextStyle style_;
  std::shared_ptr<Label> label_;
};

}  // namespace tarni::headless
