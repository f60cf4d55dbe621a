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
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"

namespace tarni {

using platform::UIViewRef;

namespace {

WalkBuffers& spareBuffers() {
  static auto* const shared = new WalkBuffers;
  return *shared;
}

// Gives the view its identity when it has none yet; the new one, or null.
const std::string* tag(const WalkStep& step, std::string_view key, bool takesPosition = true) {
  platform::CALayer& layer = step.view->layer();
  if (layer.valueForKey(key)) return nullptr;
  const std::string guid = Utilities::getGUIDString();
  layer.setValueForKey(guid, key);
  // What is listed where it does not stand, as the menus that a submenu was opened from, has its
  // place elsewhere; a window has none.
  const UIViewRef above = step.view->superview();
  XpathManager& positions = XpathManager::sharedInstance();
  if (!above || above == step.parent()) {
    positions.createXpathPositionOfUIView(above, step.view, guid, step.index(), takesPosition);
  } else {
    positions.createXpathPositionOfUIView(above, step.view, guid);
  }
  return layer.valueForKey(key);
}

void takeOffLeftoverHighlight(const UIViewRef& view) {
  if (Highlight::isLeftover(view)) Highlight::deHighlightView(view);
}

// Empty for all.
bool isOfClass(const UIViewRef& view, const std::string& lowercaseName) {
  return lowercaseName.empty() || lowercaseName == view->getClass()->lowercaseName();
}

template <typename Take>
void walkForPlayer(const UIViewRef& root, std::vector<WalkLevel>& levels, bool takesPositions,
                   Take&& take) {
  walkSubviews(root, levels, [&](const WalkStep& step) {
    tag(step, kPlaybackTag, takesPositions);
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
    if (type == "partialtext") lowercaseValue_ = Utilities::lowercaseString(value);
  }

  void noteNewIdentity(const std::string& guid) {
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

void UIViewsManager::identifyViews(const UIViewRef& root) {
  walkSubviews(root, buffers_.levels, [](const WalkStep& step) {
    if (step.view->isHidden()) return false;
    tag(step, kRecordingTag);
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
  const std::string className = platform::lowercase(type);
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
  const std::string className = platform::lowercase(tagName);
  Accessor accessor(positions_, accessorType, accessorValue);
  const bool takesPositions = positions_ == Positions::OfKeyWindow;
  WalkVisibility visibility;
  walkSubviews(parent, buffers_.levels, [&](const WalkStep& step) {
    if (const std::string* const guid = tag(step, kPlaybackTag, takesPositions)) {
      accessor.noteNewIdentity(*guid);
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
  if (!Accessor(positions_, accessorType, accessorValue).matches(view)) return;
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
