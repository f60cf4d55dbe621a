#include "agent/elements/PositionSearch.h"

#include "agent/elements/IdentityTag.h"
#include "agent/elements/XpathManager.h"

namespace tarni {

using Positions = UIViewsManager::Positions;

PositionSearch::PositionSearch(Positions positions, const std::string& xpath)
    : positions_(positions),
      xpath_(xpath),
      sought_(XpathManager::sharedInstance().getIdentificationGUIDFromXpath(xpath)) {}

void PositionSearch::noteNewIdentity(platform::Guid guid) {
  if (XpathManager::sharedInstance().isFiledUnder(guid, xpath_)) sought_ = guid;
}

bool PositionSearch::matches(const platform::UIViewRef& view) const {
  const platform::Guid guid = view->layer().tag(kPlaybackTag);
  if (!guid) return false;
  if (positions_ == Positions::OfKeyWindow) return sought_ == guid;
  return XpathManager::sharedInstance().hasPosition(guid, xpath_);
}

}  // namespace tarni
