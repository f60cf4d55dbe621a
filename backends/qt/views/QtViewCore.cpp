#include "backends/qt/views/QtViewCore.h"

namespace tarni::qt {

platform::CGPoint QtViewCore::center() const {
  if (!canBeFound()) return platform::kNowhere;
  const platform::CGRect outer = frame();
  return {outer.midX(), outer.midY()};
}

std::optional<std::string> QtViewCore::titleOrName(std::optional<std::string> title) const {
  if (title) return title;
  if (auto label = accessibilityLabel()) return label;
  return accessibilityHint();
}

}  // namespace tarni::qt
