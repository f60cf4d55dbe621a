// UIViewMemoryCache: the elements reported to the host tool, by their "elementID". A find clears
// and refills it; the commands on elements read it. Main thread.
//
// Views are held weakly: the identifier of a view that has gone answers like an unknown one.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/UIKit/UIView.h"

namespace tarni {

class UIViewMemoryCache {
 public:
  struct Entry {
    std::string identifier;
    platform::UIViewWeakRef view;
  };

  static UIViewMemoryCache& sharedInstance();

  // All entries, in the order in which they were first added.
  const std::deque<Entry>& getUIViewsMemoryCache() const { return entries_; }
  // Files the view under a fresh identifier.
  void addViewInMemoryCache(const platform::UIViewRef& view);
  // Files the view under `identifier`, in place of any view that is there.
  void addViewInMemoryCache(const platform::UIViewRef& view, std::string identifier);
  // Null when the identifier is unknown or its view has gone.
  platform::UIViewRef getUIVIewAccordingToElementId(std::string_view identifier) const;
  // In the order in which they were first added. Kept for callers from outside.
  std::vector<std::string> getAllUIViewsIdentifier() const;
  void clearMemoryCache();

 private:
  std::deque<Entry> entries_;  // which stay where they are
  std::unordered_map<std::string_view, Entry*> byIdentifier_;
};

}  // namespace tarni
