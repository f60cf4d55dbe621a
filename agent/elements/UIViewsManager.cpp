#include "agent/elements/UIViewsManager.h"

#include "agent/core/GlobalVars.h"
#include "agent/elements/IdentityTag.h"
#include "agent/elements/UIViewMemoryCache.h"
#include "agent/elements/UIView_Highlight.h"
#include "agent/elements/Utilities.h"
#include "agent/elements/WalkVisibility.h"
#include "agent/elements/XpathManager.h"
#include "agent/interaction/UIView_KIFAdditions.h"
#include "platform/UIKit/Classes.h"

namespace tarni {

using platform::UIViewRef;

namespace {

WalkBuffers& spareBuffers() {
  static auto* const shared = new WalkBuffers;
  return *shared;
}

// Gives the view its identity when it has none yet.
void tag(const WalkStep& step, std::string_view key) {
  platform::CALayer& layer = step.view->layer();
  if (layer.valueForKey(key)) return;
  const std::string guid = Utilities::getGUIDString();
  layer.setValueForKey(guid, key);
  XpathManager::sharedInstance().createXpathPositionOfUIView(step.parent(), step.view, guid,
                                                             step.index());
}

void takeOffLeftoverHighlight(const UIViewRef& view) {
  if (Highlight::isHighlighted(view)) Highlight::deHighlightView(view);
}

bool containsIgnoringCase(std::string_view text, std::string_view part) {
  return Utilities::lowercaseString(text).find(Utilities::lowercaseString(part)) !=
         std::string::npos;
}

bool matchesAccessor(const UIViewRef& view, const std::string& type, const std::string& value) {
  if (type == "text") return Utilities::getUIViewText(view) == value;
  if (type == "partialtext") return containsIgnoringCase(Utilities::getUIViewText(view), value);
  if (type.empty()) return true;
  if (type == "xpath") {
    const std::string* const guid = view->layer().valueForKey(kPlaybackTag);
    return guid && XpathManager::sharedInstance().isFiledUnder(*guid, value);
  }
  return false;
}

}  // namespace

UIViewsManager::UIViewsManager() {
  std::swap(buffers_, spareBuffers());
}

UIViewsManager::~UIViewsManager() {
  buffers_.views.clear();
  std::swap(buffers_, spareBuffers());
}

const std::vector<UIViewRef>& UIViewsManager::GetAllViews(const UIViewRef& root, bool topLevel) & {
  if (topLevel) buffers_.views.clear();
  walkSubviews(root, buffers_.levels, [this](const WalkStep& step) {
    const UIViewRef& view = step.view;
    if (view->isHidden()) return false;
    if (view->isKindOfClass(platform::uikit::UITextField) && view->isFirstResponder()) {
      GlobalVars::sharedInstance().set_editAbleElement(view);
    }
    tag(step, kRecordingTag);
    takeOffLeftoverHighlight(view);
    buffers_.views.push_back(view);
    return true;
  });
  return buffers_.views;
}

const std::vector<UIViewRef>& UIViewsManager::GetAllViewsForPlayer(const UIViewRef& root,
                                                                   bool topLevel) & {
  if (topLevel) buffers_.views.clear();
  walkSubviews(root, buffers_.levels, [this](const WalkStep& step) {
    tag(step, kPlaybackTag);
    takeOffLeftoverHighlight(step.view);
    buffers_.views.push_back(step.view);
    return true;
  });
  return buffers_.views;
}

void UIViewsManager::findElements(const UIViewRef& parent, const std::string& tagName,
                                  const std::string& accessorType,
                                  const std::string& accessorValue) {
  const std::string className = platform::lowercase(tagName);
  WalkVisibility visibility;
  walkSubviews(parent, buffers_.levels, [&](const WalkStep& step) {
    tag(step, kPlaybackTag);
    const bool isOfTag = className.empty() || className == step.view->getClass()->lowercaseName();
    // Visibility costs most, so it is asked of those that match only.
    if (isOfTag && matchesAccessor(step.view, accessorType, accessorValue) &&
        visibility.isVisibleInWindowFrame(step)) {
      UIViewMemoryCache::sharedInstance().addViewInMemoryCache(step.view);
    }
    return true;
  });
}

void UIViewsManager::identifyElementByAccessor(const UIViewRef& view, const std::string&,
                                               const std::string& accessorType,
                                               const std::string& accessorValue) {
  if (!matchesAccessor(view, accessorType, accessorValue)) return;
  if (!KIFAdditions::isVisibleInWindowFrame(view)) return;
  UIViewMemoryCache::sharedInstance().addViewInMemoryCache(view);
}

std::vector<platform::UIViewWeakRef> UIViewsManager::shownTextFields(const UIViewRef& root) {
  std::vector<platform::UIViewWeakRef> fields;
  walkSubviews(root, buffers_.levels, [&fields](const WalkStep& step) {
    if (step.view->isHidden()) return false;
    if (step.view->isKindOfClass(platform::uikit::UITextField)) fields.emplace_back(step.view);
    return true;
  });
  return fields;
}

bool UIViewsManager::isApplicableforInteractionEnabling(const UIViewRef& view) const {
  return view && view->isKindOfClass(platform::uikit::UILabel);
}

}  // namespace tarni
