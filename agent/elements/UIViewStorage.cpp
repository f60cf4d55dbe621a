#include "agent/elements/UIViewStorage.h"

#include <cstdlib>

#include "agent/core/state/MainThread.h"
#include "agent/core/state/Utilities_Text.h"

namespace tarni {

UIViewStorage& UIViewStorage::sharedObject() {
  assertMainThread();
  static auto* const shared = new UIViewStorage;
  return *shared;
}

void UIViewStorage::registerView(const platform::UIViewRef& view) {
  const std::string guid = Utilities::getGUIDString();
  viewsStorageWithIdentifier_[guid] = view;
  key_ = std::to_string(std::atol(key_.c_str()) + 1);
  viewsStorageKey_[key_] = guid;
}

platform::UIViewRef UIViewStorage::viewAtIndex(long index) const {
  const auto guid = viewsStorageKey_.find(std::to_string(index));
  if (guid == viewsStorageKey_.end()) return nullptr;
  const auto view = viewsStorageWithIdentifier_.find(guid->second);
  return view == viewsStorageWithIdentifier_.end() ? nullptr : view->second.lock();
}

}  // namespace tarni
