#include "agent/elements/UIViewMemoryCache.h"

#include "agent/core/state/MainThread.h"
#include "agent/core/state/Utilities_Text.h"

namespace tarni {

UIViewMemoryCache& UIViewMemoryCache::sharedInstance() {
  assertMainThread();
  static auto* const shared = new UIViewMemoryCache;
  return *shared;
}

void UIViewMemoryCache::addViewInMemoryCache(const platform::UIViewRef& view) {
  addViewInMemoryCache(view, Utilities::getGUIDString());
}

void UIViewMemoryCache::addViewInMemoryCache(const platform::UIViewRef& view,
                                             std::string identifier) {
  const auto known = byIdentifier_.find(identifier);
  if (known != byIdentifier_.end()) {
    known->second->view = view;
    return;
  }
  Entry& added = entries_.emplace_back(Entry{std::move(identifier), view});
  byIdentifier_.emplace(added.identifier, &added);
}

platform::UIViewRef UIViewMemoryCache::getUIVIewAccordingToElementId(
    std::string_view identifier) const {
  const auto found = byIdentifier_.find(identifier);
  return found == byIdentifier_.end() ? nullptr : found->second->view.lock();
}

std::vector<std::string> UIViewMemoryCache::getAllUIViewsIdentifier() const {
  std::vector<std::string> identifiers;
  identifiers.reserve(entries_.size());
  for (const Entry& entry : entries_) identifiers.push_back(entry.identifier);
  return identifiers;
}

void UIViewMemoryCache::clearMemoryCache() {
  byIdentifier_.clear();
  entries_.clear();
}

}  // namespace tarni
