#include "backends/ios/controls/Named.h"
#include "backends/ios/controls/ScrollView.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/Kinds.h"

namespace tarni::ios {
namespace {

class TextView : public ScrollView, public platform::UITextView {
 public:
  using ScrollView::ScrollView;

  std::optional<std::string> textViewText() const override {
    return toText(ask("text", [&] { return [as<::UITextView>() text]; }));
  }
};

}  // namespace

std::shared_ptr<View> makeTextView(::UIView* view) { return makeNamed<TextView>(view); }

}  // namespace tarni::ios
