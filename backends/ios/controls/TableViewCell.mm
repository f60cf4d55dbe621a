#include "backends/ios/controls/Named.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/views/Kinds.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {
namespace {

class TableViewCell : public View, public platform::UITableViewCell {
 public:
  using View::View;

  std::optional<bool> isSelected() const override {
    return ask("isSelected", [&]() -> bool { return [as<::UITableViewCell>() isSelected]; });
  }

  // The cell's own `text` is deprecated: a system may no longer have it.
  std::optional<std::string> cellText() const override {
    return toText(ask("text", [&] {
      const bool hasText = [native() respondsToSelector:@selector(text)];
      return hasText ? [as<NSObject>() text] : [[as<::UITableViewCell>() textLabel] text];
    }));
  }
};

}  // namespace

std::shared_ptr<View> makeTableViewCell(::UIView* view) { return makeNamed<TableViewCell>(view); }

}  // namespace tarni::ios
