// TextView: a UITextView, an editable text of several lines. A tap gives it the focus. Main thread.
#pragma once

#include <string>
#include <string_view>

#include "backends/headless/drawing/TextStyle.h"
#include "backends/headless/views/ScrollView.h"

namespace tarni::headless {

class TextView : public ScrollView, public platform::UITextView {
 public:
  explicit TextView(std::string text = {}, platform::Class cls = platform::uikit::UITextView);

  std::optional<std::string> textViewText() const override { return text_; }
  void setText(std::string text) { setContent(text_, std::move(text)); }
  // As a person types it: appended. Only while it has the focus; false otherwise.
  bool type(std::string_view text);

  bool handleTouch(platform::UITouchPhase phase, platform::UITouch& touch) override;
  void drawContent(Canvas& canvas) const override;

 private:
  std::string text_;
};

}  // namespace tarni::headless
