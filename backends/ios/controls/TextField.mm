#include "backends/ios/controls/ControlView.h"
#include "backends/ios/controls/Named.h"
#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {
namespace {

constexpr NSUInteger kEditingDidEndOnExit = 1 << 19;

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

  // A field of one line asks its delegate, and tells who waits for its end.
  platform::Task<void> insertReturn() override {
    return completed([field = Owned(as<::UITextField>())] {
      guarded([&] {
        const id<UITextFieldDelegate> delegate = [field.get() delegate];
        if ([delegate respondsToSelector:@selector(textFieldShouldReturn:)] &&
            ![delegate textFieldShouldReturn:field.get()]) {
          return;
        }
        [field.get() sendActionsForControlEvents:kEditingDidEndOnExit];
      });
    });
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
