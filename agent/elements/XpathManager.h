// XpathManager: the two-way map between the GUIDs of views and their XPath positions. A position is
// filed once, when a view gets its tag, and only ever added to. Main thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "agent/elements/XpathTrie.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

class XpathManager {
 public:
  static XpathManager& sharedInstance();

  // Files the view's position under `guid`: the position of `parent` (none for a parent without
  // one, such as a window), then the view's class name and its index among all siblings of that
  // name.
  void createXpathPositionOfUIView(const platform::UIViewRef& parent,
                                   const platform::UIViewRef& view, platform::Guid guid);
  // The same with the index already counted. Unless it takes the position over, that is left to who
  // has it, and is the view's own as well.
  void createXpathPositionOfUIView(const platform::UIViewRef& parent,
                                   const platform::UIViewRef& view, platform::Guid guid, long index,
                                   bool takesOver = true);

  // The position filed for the view's recording tag, or for its playback tag when it has only that.
  // Null for a view without tag.
  std::optional<std::string> getPositionXpathOfUIView(const platform::UIViewRef& view) const;
  // The GUID filed last under the position; null when there is none.
  std::optional<platform::Guid> getIdentificationGUIDFromXpath(std::string_view xpath) const;
  // True when `guid` is the one filed last under the position. For a GUID that was filed once, as
  // all tags are; quick where it is false.
  bool isFiledUnder(platform::Guid guid, std::string_view xpath) const;
  // True when the position is the one filed for `guid`, whoever is filed under it.
  bool hasPosition(platform::Guid guid, std::string_view xpath) const;
  // From position to GUID.
  const XpathTrie& getXpathPosition_PlaybackDictionary() const { return positions_; }

 private:
  XpathTrie positions_;
};

}  // namespace tarni
