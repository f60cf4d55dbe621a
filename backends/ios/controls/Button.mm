#include "backends/ios/controls/ControlView.h"
#include "backends/ios/controls/Named.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {
namespace {

class Button : public ControlView, public platform::UIButton {
 public:
  using ControlView::ControlView;

  std::optional<std::string> currentTitle() const override {
    return toText(ask("currentTitle", [&] { return [as<::UIButton>() currentTitle]; }));
  }
};

}  // namespace

std::shared_ptr<View> makeButton(::UIView* view) { return makeNamed<Button>(view); }

}  // namespace tarni::ios
