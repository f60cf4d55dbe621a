#include <algorithm>
#include <nlohmann/json.hpp>

#include "agent/AI/AiAPI.h"
#include "agent/commands/NativeCommands.h"
#include "agent/core/state/Utilities_Text.h"
#include "agent/elements/IdentityTag.h"
#include "agent/elements/UIViewFinder.h"
#include "agent/elements/UIViewMemoryCache.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/Utilities.h"
#include "agent/elements/XpathManager.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"

namespace tarni::commands {

using nlohmann::ordered_json;
using platform::UIViewRef;

namespace {

// One "elementID" for each element in the cache.
ordered_json collectIdentifiers() {
  ordered_json entries = ordered_json::array();
  for (const auto& cached : UIViewMemoryCache::sharedInstance().getUIViewsMemoryCache()) {
    ordered_json entry;
    entry["elementID"] = cached.identifier;
    entries.push_back(std::move(entry));
  }
  return entries;
}

// Searches below `parent`; null is nowhere.
void findBelow(const UIViewRef& parent, const FunctionCallObject& command) {
  UIViewsManager manager;
  manager.findElements(parent, command.getTagName(), command.getAccessorType(),
                       command.getAccessorValue());
}

bool foundSomething() {
  return !UIViewMemoryCache::sharedInstance().getUIViewsMemoryCache().empty();
}

// Calls `search(window)` for the current window and, as long as nothing was found, for the others
// that take input, front to back.
template <typename Search>
void searchWindows(Search&& search) {
  const platform::UIWindowRef current = UIViewFinder::getCurrentWindow();
  search(current);
  if (foundSomething()) return;
  for (const auto& other : platform::current().application->windowsThatTakeInput()) {
    if (other == current) continue;
    search(other);
    if (foundSomething()) return;
  }
}

bool matchesText(const UIViewRef& field, const FunctionCallObject& command) {
  if (command.getAccessorType().empty()) return true;
  const std::string text = Utilities::getUIViewText(field);
  if (command.getAccessorType() == "text") return text == command.getAccessorValue();
  return command.getAccessorType() == "partialtext" &&
         Utilities::lowercaseString(text).find(
             Utilities::lowercaseString(command.getAccessorValue())) != std::string::npos;
}

void addFieldsByText(const std::vector<UIViewRef>& views, const FunctionCallObject& command) {
  for (const UIViewRef& view : views) {
    const bool isField = view->isKindOfClass(platform::uikit::UITextField);
    if (isField && matchesText(view, command)) {
      UIViewMemoryCache::sharedInstance().addViewInMemoryCache(view);
    }
  }
}

// Adds the first view of all, text field or not, that has the position; nothing on a screen without
// a text field.
void addViewByXpath(const std::vector<UIViewRef>& views, const std::string& xpath) {
  const auto isField = [](const UIViewRef& view) {
    return view->isKindOfClass(platform::uikit::UITextField);
  };
  const auto guid = XpathManager::sharedInstance().getIdentificationGUIDFromXpath(xpath);
  if (!guid || std::ranges::none_of(views, isField)) return;
  const auto found = std::ranges::find_if(views, [&guid](const UIViewRef& view) {
    const std::string* const tag = view->layer().valueForKey(kPlaybackTag);
    return tag && *tag == *guid;
  });
  if (found != views.end()) UIViewMemoryCache::sharedInstance().addViewInMemoryCache(*found);
}

}  // namespace

Entries findelementsinsideelement(FunctionCallObject command) {
  // 1. Wait for a view controller that is about to appear.
  co_await UIViewFinder::waitForViewControllerLoaded();
  // 2. Take the parent before the search clears the cache that knows it.
  const UIViewRef parent =
      UIViewMemoryCache::sharedInstance().getUIVIewAccordingToElementId(command.getDataValue());
  // 3. Search below it.
  UIViewMemoryCache::sharedInstance().clearMemoryCache();
  findBelow(parent, command);
  co_return collectIdentifiers();
}

Entries findeditablecomponents(FunctionCallObject command) {
  // 1. Wait for a view controller that is about to appear.
  co_await UIViewFinder::waitForViewControllerLoaded();
  // 2. Clear the cache.
  UIViewMemoryCache::sharedInstance().clearMemoryCache();
  // 3. Of all views, add the text fields that match, or the one view at a position.
  searchWindows([&command](const platform::UIWindowRef& window) {
    const std::vector<UIViewRef> views = UIViewsManager().viewsForPlayerOfType(window, "");
    if (command.getAccessorType() == "xpath") {
      addViewByXpath(views, command.getAccessorValue());
    } else {
      addFieldsByText(views, command);
    }
  });
  // 4. Answer what was added.
  co_return collectIdentifiers();
}

Entries findelements(FunctionCallObject command) {
  // 1. Wait for a view controller that is about to appear.
  co_await UIViewFinder::waitForViewControllerLoaded();
  // 2. Search the whole window, and the others when nothing in it fits.
  UIViewMemoryCache::sharedInstance().clearMemoryCache();
  searchWindows([&command](const platform::UIWindowRef& window) { findBelow(window, command); });
  co_return collectIdentifiers();
}

Entries ai_findelements(FunctionCallObject command) {
  // 1. The current window, or the one of the element that the command names.
  const UIViewRef element = elementOf(command);
  platform::UIWindowRef window = element ? element->window() : UIViewFinder::getCurrentWindow();
  // 2. The answer is the array of descriptions as it is.
  const AiAPI api;
  co_return co_await api.getAllViewsInformation(command.getTagName(), std::move(window));
}

}  // namespace tarni::commands
