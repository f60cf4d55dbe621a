#include "backends/ios/controls/Named.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/Kinds.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {
namespace {

class Label : public View, public platform::UILabel {
 public:
  using View::View;

  std::optional<std::string> labelText() const override {
    return toText(ask("text", [&] { return [as<::UILabel>() text]; }));
  }
};

}  // namespace

std::shared_ptr<View> makeLabel(::UIView* view) { return makeNamed<Label>(view); }

}  // namespace tarni::ios
