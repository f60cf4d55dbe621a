#include "agent/elements/UIViewMemoryCache.h"

#include "agent/elements/Utilities.h"

namespace tarni {

UIViewMemoryCache& UIViewMemoryCache::sharedInstance() {
  static auto* const shared = new UIViewMemoryCache;
  return *shared;
}

void UIViewMemoryCache::addViewInMemoryCache(const platform::UIViewRef& view) {
  addViewInMemoryCache(view, Utilities::getGUIDString());
}

void UIViewMemoryCache::addViewInMemoryCache(const platform::UIViewRef& view,
                                             std::string identifier) {
  const auto [position, isNew] = positions_.try_emplace(identifier, entries_.size());
  if (isNew) {
    entries_.push_back({std::move(identifier), view});
  } else {
    entries_[position->second].view = view;
  }
}

platform::UIViewRef UIViewMemoryCache::getUIVIewAccordingToElementId(
    std::string_view identifier) const {
  const auto found = positions_.find(identifier);
  return found == positions_.end() ? nullptr : entries_[found->second].view.lock();
}

std::vector<std::string> UIViewMemoryCache::getAllUIViewsIdentifier() const {
  std::vector<std::string> identifiers;
  identifiers.reserve(entries_.size());
  for (const Entry& entry : entries_) identifiers.push_back(entry.identifier);
  return identifiers;
}

void UIViewMemoryCache::clearMemoryCache() {
  entries_.clear();
  positions_.clear();
}

}  // namespace tarni
