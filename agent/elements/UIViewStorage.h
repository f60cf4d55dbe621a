// UIViewStorage: the elements that were spied, by a running index, so that the host tool can ask
// for the n-th to be highlighted. It only grows. Main thread.
//
// Views are held weakly; an entry stays when its view goes, so that indices keep their meaning.
#pragma once

#include <string>
#include <unordered_map>

#include "platform/UIKit/UIView.h"

namespace tarni {

class UIViewStorage {
 public:
  static UIViewStorage& sharedObject();

  // Files the view under a fresh GUID and the GUID under the next index.
  void registerView(const platform::UIViewRef& view);
  // Null when there is no such index or its view has gone.
  platform::UIViewRef viewAtIndex(long index) const;

  // Kept for callers from outside.
  const std::string& commonString() const { return commonString_; }
  // From GUID to view.
  const std::unordered_map<std::string, platform::UIViewWeakRef>& _viewsStorageWithIdentifier()
      const {
    return viewsStorageWithIdentifier_;
  }
  // From index (decimal text) to GUID.
  const std::unordered_map<std::string, std::string>& _viewsStorageKey() const {
    return viewsStorageKey_;
  }
  // The last index handed out, as decimal text; "-1" before the first.
  const std::string& _key() const { return key_; }
  // The number of views that the last spy selection walked over; 0 after a highlight. Kept: indices
  // count from the entries, not from here.
  long count() const { return count_; }
  void setCount(long count) { count_ = count; }

 private:
  std::string commonString_ = "This is string.";
  std::unordered_map<std::string, platform::UIViewWeakRef> viewsStorageWithIdentifier_;
  std::unordered_map<std::string, std::string> viewsStorageKey_;
  std::string key_ = "-1";
  long count_ = 0;
};

}  // namespace tarni
