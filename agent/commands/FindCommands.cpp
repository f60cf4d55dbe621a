#include <algorithm>
#include <nlohmann/json.hpp>

#include "agent/AI/AiAPI.h"
#include "agent/commands/NativeCommands.h"
#include "agent/core/state/Utilities_Text.h"
#include "agent/elements/PositionSearch.h"
#include "agent/elements/UIViewFinder.h"
#include "agent/elements/UIViewMemoryCache.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/Utilities.h"
#include "platform/Foundation/Lowercase.h"
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

// A search beside the key window takes positions as they are and leaves them to what has them.
UIViewsManager::Positions positionsFor(const FunctionCallObject& command, const UIViewRef& root) {
  const bool isBeside = root && root->window() != UIViewFinder::getCurrentWindow();
  return isBeside || !command.getWindow().empty() ? UIViewsManager::Positions::OfEachWindow
                                                  : UIViewsManager::Positions::OfKeyWindow;
}

// Searches below `parent`; null is nowhere.
void findBelow(const UIViewRef& parent, const FunctionCallObject& command) {
  UIViewsManager manager(positionsFor(command, parent));
  manager.findElements(parent, command.getTagName(), command.getAccessorType(),
                       command.getAccessorValue());
}

// In which the command searches, in turn. Asked before the cache of found elements is cleared.
std::vector<platform::UIWindowRef> windowsOf(const FunctionCallObject& command) {
  if (command.getWindow().empty()) return {UIViewFinder::getCurrentWindow()};
  if (command.getWindow() == "any") return platform::current().application->windowsThatTakeInput();
  const UIViewRef element =
      UIViewMemoryCache::sharedInstance().getUIVIewAccordingToElementId(command.getWindow());
  return {element ? element->window() : nullptr};
}

// Calls `search(window)` for one window after the other as long as nothing was found.
template <typename Search>
void searchWindows(const FunctionCallObject& command, Search&& search) {
  const std::vector<platform::UIWindowRef> windows = windowsOf(command);
  UIViewMemoryCache& cache = UIViewMemoryCache::sharedInstance();
  cache.clearMemoryCache();
  for (const platform::UIWindowRef& window : windows) {
    search(window);
    if (!cache.getUIViewsMemoryCache().empty()) return;
  }
}

void addFieldsByText(const std::vector<UIViewRef>& views, const FunctionCallObject& command) {
  const std::string& type = command.getAccessorType();
  const std::string& value = command.getAccessorValue();
  const std::string lowercaseValue = platform::lowercaseString(value);
  const auto matches = [&](const UIViewRef& field) {
    if (type.empty()) return true;
    const std::string text = Utilities::getUIViewText(field);
    if (type == "text") return text == value;
    return type == "partialtext" && Utilities::containsLowercase(text, lowercaseValue);
  };
  for (const UIViewRef& view : views) {
    const bool isField = view->isKindOfClass(platform::uikit::UITextField);
    if (isField && matches(view)) {
      UIViewMemoryCache::sharedInstance().addViewInMemoryCache(view);
    }
  }
}

// Adds the first view of all, text field or not, that has the position; nothing on a screen without
// a text field.
void addViewByXpath(const std::vector<UIViewRef>& views, UIViewsManager::Positions positions,
                    const std::string& xpath) {
  const auto isField = [](const UIViewRef& view) {
    return view->isKindOfClass(platform::uikit::UITextField);
  };
  if (std::ranges::none_of(views, isField)) return;
  const PositionSearch search(positions, xpath);
  const auto found =
      std::ranges::find_if(views, [&](const UIViewRef& view) { return search.matches(view); });
  if (found != views.end()) UIViewMemoryCache::sharedInstance().addViewInMemoryCache(*found);
}

}  // namespace

Entries findelementsinsideelement(FunctionCallObject command) {
  co_await UIViewFinder::waitForViewControllerLoaded();
  // The search clears the cache that knows the parent.
  const UIViewRef parent =
      UIViewMemoryCache::sharedInstance().getUIVIewAccordingToElementId(command.getDataValue());
  UIViewMemoryCache::sharedInstance().clearMemoryCache();
  findBelow(parent, command);
  co_return collectIdentifiers();
}

Entries findeditablecomponents(FunctionCallObject command) {
  co_await UIViewFinder::waitForViewControllerLoaded();
  searchWindows(command, [&command](const platform::UIWindowRef& window) {
    const auto positions = positionsFor(command, window);
    const std::vector<UIViewRef> views = UIViewsManager(positions).viewsForPlayerOfType(window, "");
    if (command.getAccessorType() == "xpath") {
      addViewByXpath(views, positions, command.getAccessorValue());
    } else {
      addFieldsByText(views, command);
    }
  });
  co_return collectIdentifiers();
}

Entries findelements(FunctionCallObject command) {
  co_await UIViewFinder::waitForViewControllerLoaded();
  searchWindows(command,
                [&command](const platform::UIWindowRef& window) { findBelow(window, command); });
  co_return collectIdentifiers();
}

Entries ai_findelements(FunctionCallObject command) {
  // The answer is the array of descriptions as it is.
  const AiAPI api;
  ordered_json descriptions = ordered_json::array();
  std::vector<platform::UIViewWeakRef> windows;
  for (const platform::UIWindowRef& window : windowsOf(command)) windows.emplace_back(window);
  for (std::size_t at = 0; at < windows.size() && descriptions.empty(); ++at) {
    platform::UIWindowRef window = windows[at].lock();
    descriptions = co_await api.getAllViewsInformation(command.getTagName(), std::move(window));
  }
  co_return descriptions;
}

}  // namespace tarni::commands
