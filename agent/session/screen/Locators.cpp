#include "agent/session/screen/Locators.h"

#include <algorithm>
#include <utility>

#include "agent/elements/ViewKinds.h"
#include "agent/session/calls/Costs.h"
#include "agent/session/protocol/JsonText.h"
#include "agent/session/screen/Description.h"
#include "agent/session/screen/Selector.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIItems.h"
#include "platform/UIKit/UIWindow.h"

namespace tarni::session {

using platform::UIViewRef;

namespace {

using Text = std::optional<std::string>;

constexpr std::size_t kLongestText = 200;

// What a person changes does not tell the element from others the next time.
Text lastingText(const UIViewRef& view) {
  if (isEditable(view) || kindOf<platform::UIValueControl>(view)) return std::nullopt;
  return textOf(view);
}

std::string positionOf(UIViewRef view) {
  std::string position;
  for (UIViewRef parent = view->superview(); parent; parent = view->superview()) {
    const std::string& name = view->getClass()->name();
    long index = 0;
    for (const UIViewRef& sibling : parent->contents()) {
      if (sibling == view) break;
      if (sibling->getClass() == view->getClass()) ++index;
    }
    position.insert(0, "\\" + name + "[" + std::to_string(index) + "]");
    view = parent;
  }
  return position;
}

// The nearest names of what it stands in, below the window.
std::vector<std::string> groupsOf(const UIViewRef& view) {
  Text identifier;
  Text label;
  for (UIViewRef outer = view->superview(); outer; outer = outer->superview()) {
    if (outer->isKindOfClass(platform::uikit::UIWindow)) break;
    if (!identifier) identifier = outer->accessibilityIdentifier();
    if (!label) label = labelOf(outer);
  }
  std::vector<std::string> groups;
  for (const Text& name : {identifier, label}) {
    const bool isNew = name && !name->empty() && name->size() <= kLongestText;
    if (isNew && std::ranges::find(groups, *name) == groups.end()) groups.push_back(*name);
  }
  return groups;
}

std::vector<Json> candidates(const UIViewRef& view, ReachedBy way) {
  const std::string& className = view->getClass()->name();
  const bool isWindow = view->isKindOfClass(platform::uikit::UIWindow);
  const Text title = titleOfWindow(view);
  const std::vector<std::string> groups = groupsOf(view);
  std::vector<Json> all;
  const auto add = [&](const char* name, const Text& value) {
    if (!value || value->empty() || value->size() > kLongestText) return;
    all.push_back({{name, *value}, {"class", className}, {"visible", true}});
  };
  // What stands in more than one place is told by where.
  const auto addScoped = [&](const std::vector<Json>& plain, const char* scope,
                             const std::string& name) {
    for (Json find : plain) {
      find[scope] = name;
      all.push_back(std::move(find));
    }
  };
  if (const Text identifier = view->accessibilityIdentifier()) {
    all.push_back({{"identifier", *identifier}});
  }
  const Text text = lastingText(view);
  const Text label = labelOf(view);
  // The label of a tab bar may be the tab that is chosen.
  if (label != textOf(view)) add("label", label);
  add("text", text);
  add("placeholder", placeholderOf(view));
  const std::vector<Json> named = all;
  for (const std::string& group : groups) addScoped(named, "group", group);
  if (title && !isWindow) addScoped(named, "windowTitle", *title);
  if (way == ReachedBy::Keys && isEditable(view) && view->isFirstResponder()) {
    all.push_back({{"focused", true}, {"class", className}});
  }
  add("class", className);
  const std::vector<Json> kind{all.back()};
  for (const std::string& group : groups) addScoped(kind, "group", group);
  if (std::string position = positionOf(view); !position.empty()) {
    all.push_back({{"xpath", std::move(position)}});
    if (title) all.back()["windowTitle"] = *title;
  }
  return all;
}

bool isScoped(const Json& find) {
  return find.contains("group") || (find.contains("windowTitle") && !find.contains("xpath"));
}

}  // namespace

std::vector<Locator> locatorsOf(const UIViewRef& view, ReachedBy way) {
  const std::shared_ptr<void> still = platform::current().application->holdStill();
  std::vector<Locator> locators;
  bool isScopeNeeded = true;
  for (Json& find : candidates(view, way)) {
    if (isScoped(find) && !isScopeNeeded) continue;
    const Clock::time_point start = Clock::now();
    std::vector<UIViewRef> pages;  // where others could stand, which nobody asks here
    const std::vector<Match> matches = Selector(find).find(0, &pages);
    const double took = seconds(Clock::now() - start) * 1000;
    const bool fits = std::ranges::find(matches, view, &Match::view) != matches.end();
    if (!fits) continue;
    if (matches.size() == 1) isScopeNeeded = false;
    locators.push_back({std::move(find), matches.size(), took});
  }
  std::stable_partition(locators.begin(), locators.end(),
                        [](const Locator& one) { return one.matches == 1; });
  return locators;
}

std::string written(const std::vector<Locator>& locators) {
  JsonText text;
  text.open('[');
  for (const Locator& locator : locators) {
    text.open('{');
    text.key("find");
    text.raw(jsonText(locator.find));
    text.add("matches", static_cast<long>(locator.matches));
    text.add("ms", locator.milliseconds);
    text.close('}');
  }
  text.close(']');
  return text.take();
}

}  // namespace tarni::session
