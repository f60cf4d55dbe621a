#include "agent/elements/UIViewsManager.h"

#include "agent/core/state/GlobalVars.h"
#include "agent/core/state/MainThread.h"
#include "agent/core/state/Utilities_Text.h"
#include "agent/elements/IdentityTag.h"
#include "agent/elements/PositionSearch.h"
#include "agent/elements/UIViewMemoryCache.h"
#include "agent/elements/UIView_Highlight.h"
#include "agent/elements/UIView_KIFAdditions_Visibility.h"
#include "agent/elements/Utilities.h"
#include "agent/elements/WalkVisibility.h"
#include "agent/elements/XpathManager.h"
#include "platform/Foundation/Lowercase.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"

namespace tarni {

using platform::UIViewRef;

namespace {

WalkBuffers& spareBuffers() {
  static auto* const shared = new WalkBuffers;
  return *shared;
}

// Gives the views of one walk their identities.
class Tagging {
 public:
  explicit Tagging(const platform::TagKey& key, bool takesPositions = true)
      : key_(key), takesPositions_(takesPositions) {}

  // The view's new identity; none when it has one already, or is a window, which has none.
  platform::Guid tag(const WalkStep& step) {
    const std::size_t depth = step.path.size();
    if (depth <= otherWindow_) otherWindow_ = 0;
    platform::CALayer& layer = step.view->layer();
    if (layer.tag(key_)) return {};
    if (step.view->isKindOfClass(platform::uikit::UIWindow)) {
      if (otherWindow_ == 0) otherWindow_ = depth;
      return {};
    }
    const platform::Guid guid = platform::Guid::next();
    layer.setTag(guid, key_);
    file(step, guid);
    return guid;
  }

 private:
  void file(const WalkStep& step, platform::Guid guid) const {
    const UIViewRef above = step.view->superview();
    XpathManager& positions = XpathManager::sharedInstance();
    // What is listed where it does not stand, as the menu bar that a menu was opened from, has its
    // place elsewhere.
    if (above && above != step.parent()) {
      return positions.createXpathPositionOfUIView(above, step.view, guid);
    }
    positions.createXpathPositionOfUIView(above, step.view, guid, step.index(),
                                          takesPositions_ && otherWindow_ == 0);
  }

  const platform::TagKey key_;
  const bool takesPositions_;
  // How deep a window is listed that the walk is in, as the menu that a submenu was opened from;
  // 0 outside of such. What stands there leaves its positions to the views of the root's window.
  std::size_t otherWindow_ = 0;
};

void takeOffLeftoverHighlight(const UIViewRef& view) {
  if (Highlight::isLeftover(view)) Highlight::deHighlightView(view);
}

// Empty for all.
bool isOfClass(const UIViewRef& view, const std::string& lowercaseName) {
  return lowercaseName.empty() || lowercaseName == view->getClass()->lowercaseName();
}

template <typename Take>
void walkForRecorder(const UIViewRef& root, std::vector<WalkLevel>& levels, Take&& take) {
  Tagging tagging(kRecordingTag);
  walkSubviews(root, levels, [&](const WalkStep& step) {
    const UIViewRef& view = step.view;
    if (view->isHidden()) return false;
    if (view->isKindOfClass(platform::uikit::UITextField) && view->isFirstResponder()) {
      GlobalVars::sharedInstance().set_editAbleElement(view);
    }
    tagging.tag(step);
    takeOffLeftoverHighlight(view);
    take(view);
    return true;
  });
}

template <typename Take>
void walkForPlayer(const UIViewRef& root, std::vector<WalkLevel>& levels, bool takesPositions,
                   Take&& take) {
  Tagging tagging(kPlaybackTag, takesPositions);
  walkSubviews(root, levels, [&](const WalkStep& step) {
    tagging.tag(step);
    takeOffLeftoverHighlight(step.view);
    take(step.view);
    return true;
  });
}

// How a search knows its elements. What does not depend on the view is worked out once.
class Accessor {
 public:
  Accessor(UIViewsManager::Positions positions, const std::string& type, const std::string& value)
      : type_(type), value_(value) {
    if (type == "xpath") position_.emplace(positions, value);
    if (type == "partialtext") lowercaseValue_ = platform::lowercaseString(value);
  }

  void noteNewIdentity(platform::Guid guid) {
    if (position_) position_->noteNewIdentity(guid);
  }

  bool matches(const UIViewRef& view) const {
    if (type_ == "text") return Utilities::getUIViewText(view) == value_;
    if (type_ == "partialtext") {
      return Utilities::containsLowercase(Utilities::getUIViewText(view), lowercaseValue_);
    }
    return type_.empty() || (position_ && position_->matches(view));
  }

 private:
  const std::string& type_;
  const std::string& value_;
  std::string lowercaseValue_;
  std::optional<PositionSearch> position_;
};

}  // namespace

UIViewsManager::UIViewsManager(Positions positions) : positions_(positions) {
  assertMainThread();
  std::swap(buffers_, spareBuffers());
}

UIViewsManager::~UIViewsManager() {
  buffers_.views.clear();
  std::swap(buffers_, spareBuffers());
}

const std::vector<UIViewRef>& UIViewsManager::GetAllViews(const UIViewRef& root, bool topLevel) & {
  if (topLevel) buffers_.views.clear();
  walkForRecorder(root, buffers_.levels,
                  [this](const UIViewRef& view) { buffers_.views.push_back(view); });
  return buffers_.views;
}

void UIViewsManager::goThroughAllViews(const UIViewRef& root) {
  walkForRecorder(root, buffers_.levels, [](const UIViewRef&) {});
}

void UIViewsManager::identifyViews(const UIViewRef& root) {
  Tagging tagging(kRecordingTag);
  walkSubviews(root, buffers_.levels, [&tagging](const WalkStep& step) {
    if (step.view->isHidden()) return false;
    tagging.tag(step);
    return true;
  });
}

const std::vector<UIViewRef>& UIViewsManager::GetAllViewsForPlayer(const UIViewRef& root,
                                                                   bool topLevel) & {
  if (topLevel) buffers_.views.clear();
  walkForPlayer(root, buffers_.levels, positions_ == Positions::OfKeyWindow,
                [this](const UIViewRef& view) { buffers_.views.push_back(view); });
  return buffers_.views;
}

std::vector<UIViewRef> UIViewsManager::viewsForPlayerOfType(const UIViewRef& root,
                                                            const std::string& type) {
  const std::string className = platform::lowercaseString(type);
  std::vector<UIViewRef> views;
  walkForPlayer(root, buffers_.levels, positions_ == Positions::OfKeyWindow,
                [&](const UIViewRef& view) {
                  if (isOfClass(view, className)) views.push_back(view);
                });
  return views;
}

UIViewRef UIViewsManager::firstForPlayer(const UIViewRef& root, bool (*isMeant)(const UIViewRef&)) {
  UIViewRef first;
  walkForPlayer(root, buffers_.levels, positions_ == Positions::OfKeyWindow,
                [&](const UIViewRef& view) {
                  if (!first && isMeant(view)) first = view;
                });
  return first;
}

void UIViewsManager::findElements(const UIViewRef& parent, const std::string& tagName,
                                  const std::string& accessorType,
                                  const std::string& accessorValue) {
  const std::shared_ptr<void> still = platform::current().application->holdStill();
  const std::string className = platform::lowercaseString(tagName);
  Accessor accessor(positions_, accessorType, accessorValue);
  Tagging tagging(kPlaybackTag, positions_ == Positions::OfKeyWindow);
  WalkVisibility visibility;
  walkSubviews(parent, buffers_.levels, [&](const WalkStep& step) {
    if (const platform::Guid guid = tagging.tag(step)) {
      accessor.noteNewIdentity(guid);
    }
    if (isOfClass(step.view, className) && visibility.isVisibleInWindowFrame(step) &&
        accessor.matches(step.view)) {
      UIViewMemoryCache::sharedInstance().addViewInMemoryCache(step.view);
    }
    return true;
  });
}

void UIViewsManager::identifyElementByAccessor(const UIViewRef& view, const std::string&,
                                               const std::string& accessorType,
                                               const std::string& accessorValue) {
  if (!KIFAdditions::isVisibleInWindowFrame(view)) return;
  if (!Accessor(positions_, accessorType, accessorValue).matches(view)) return;
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
