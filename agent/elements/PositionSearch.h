// PositionSearch: which view stands at an XPath position. Main thread.
#pragma once

#include <optional>
#include <string>

#include "agent/elements/UIViewsManager.h"

namespace tarni {

class PositionSearch {
 public:
  // Looks the position up once. `xpath` is kept by reference.
  PositionSearch(UIViewsManager::Positions positions, const std::string& xpath);

  // A view got its identity in the middle of the search, and may have taken the position.
  void noteNewIdentity(platform::Guid guid);
  bool matches(const platform::UIViewRef& view) const;

 private:
  const UIViewsManager::Positions positions_;
  const std::string& xpath_;
  std::optional<platform::Guid> sought_;  // the identity of the view that has the position
};

}  // namespace tarni
