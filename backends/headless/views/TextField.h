// TextField: a UITextField of one line. A tap gives it the focus. Main thread.
#pragma once

#include <optional>
#include <string>

#include "backends/headless/views/Control.h"

namespace tarni::headless {

class TextField : public Control, public platform::UITextField {
 public:
  explicit TextField(std::optional<std::string> placeholder = std::nullopt,
                     platform::Class cls = platform::uikit::UITextField);

  std::optional<std::string> placeholder() const override { return placeholder_; }
  void setPlaceholder(std::optional<std::string> text) {
    setContent(placeholder_, std::move(text));
  }
  std::string text() const override { return text_; }
  // As the application sets it: nobody is told.
  platform::Task<void> setText(std::string text) override;
  void replaceText(std::string text) { setContent(text_, std::move(text)); }
  // As a person types it: appended, and the editing-changed actions run. Only while it has the
  // focus; false otherwise.
  bool type(std::string_view text);
  // The text is drawn as dots.
  bool isSecureTextEntry() const override { return secure_; }
  void setSecure(bool secure) { setContent(secure_, secure); }

  void drawContent(Canvas& canvas) const override;

 protected:
  void tapped(platform::CGPoint point) override;
  void didBecomeFirstResponder() override;
  void didResignFirstResponder() override;

 private:
  std::optional<std::string> placeholder_;
  std::string text_;
  bool secure_ = false;
};

}  // namespace tarni::headless
