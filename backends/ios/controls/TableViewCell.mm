#include "backends/ios/Kinds.h"
#include "backends/ios/Values.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::ios {
namespace {

class TableViewCell : public View, public platform::UITableViewCell {
 public:
  using View::View;

  // The cell's own `text` is its label's, and newer systems have the label alone.
  std::optional<std::string> cellText() const override {
    return toText(ask("textLabel", [&] { return [[as<::UITableViewCell>() textLabel] text]; }));
  }
};

}  // namespace

std::shared_ptr<View> makeTableViewCell(::UIView* view) {
  return std::make_shared<TableViewCell>(view);
}

}  // namespace tarni::ios
