#include "agent/elements/XpathManager.h"

#include "agent/core/state/MainThread.h"
#include "agent/elements/IdentityTag.h"

namespace tarni {

using platform::UIViewRef;

namespace {

std::optional<XpathTrie::Node> positionOf(const XpathTrie& positions, const UIViewRef& view) {
  return positions.nodeOfGuid(identityTag(view));
}

// Of the view among its siblings of the same class name.
long indexOf(const UIViewRef& view) {
  long index = 0;
  const UIViewRef superview = view->superview();
  if (!superview) return index;
  const std::string& name = view->getClass()->name();
  for (const UIViewRef& sibling : superview->subviews()) {
    if (sibling == view) break;
    if (sibling->getClass()->name() == name) ++index;
  }
  return index;
}

}  // namespace

XpathManager& XpathManager::sharedInstance() {
  assertMainThread();
  static auto* const shared = new XpathManager;
  return *shared;
}

void XpathManager::createXpathPositionOfUIView(const UIViewRef& parent, const UIViewRef& view,
                                               platform::Guid guid) {
  createXpathPositionOfUIView(parent, view, guid, indexOf(view));
}

void XpathManager::createXpathPositionOfUIView(const UIViewRef& parent, const UIViewRef& view,
                                               platform::Guid guid, long index, bool takesOver) {
  const XpathTrie::Node prefix = positionOf(positions_, parent).value_or(XpathTrie::kRoot);
  positions_.file(prefix, view->getClass(), index, guid, takesOver);
}

std::optional<std::string> XpathManager::getPositionXpathOfUIView(const UIViewRef& view) const {
  const std::optional<XpathTrie::Node> position = positionOf(positions_, view);
  return position ? std::optional(positions_.text(*position)) : std::nullopt;
}

std::optional<platform::Guid> XpathManager::getIdentificationGUIDFromXpath(
    std::string_view xpath) const {
  return positions_.objectForKey(xpath);
}

bool XpathManager::isFiledUnder(platform::Guid guid, std::string_view xpath) const {
  return hasPosition(guid, xpath) && positions_.guidOf(*positions_.nodeOfGuid(guid)) == guid;
}

bool XpathManager::hasPosition(platform::Guid guid, std::string_view xpath) const {
  const std::optional<XpathTrie::Node> position = positions_.nodeOfGuid(guid);
  return position && positions_.isText(*position, xpath);
}

}  // namespace tarni
