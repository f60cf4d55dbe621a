#include "backends/ios/controls/ControlView.h"
#include "backends/ios/controls/Named.h"
#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {
namespace {

class TextField : public ControlView, public platform::UITextField {
 public:
  using ControlView::ControlView;

  std::optional<std::string> placeholder() const override {
    return toText(ask("placeholder", [&] { return [as<::UITextField>() placeholder]; }));
  }

  std::string text() const override {
    return toTextOrEmpty(ask("text", [&] { return [as<::UITextField>() text]; }));
  }

  bool isSecureTextEntry() const override {
    return ask("isSecureTextEntry",
               [&]() -> bool { return [as<::UITextField>() isSecureTextEntry]; });
  }

  platform::Task<void> setText(std::string text) override {
    return completed([field = Owned(as<::UITextField>()), text = std::move(text)] {
      guarded([&] { [field.get() setText:toNSString(text)]; });
    });
  }
};

}  // namespace

std::shared_ptr<View> makeTextField(::UIView* view) { return makeNamed<TextField>(view); }

}  // namespace tarni::ios
