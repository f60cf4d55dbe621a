#include "agent/session/screen/Locators.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <optional>
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
  std::string identifier;
  std::string label;
  nearestAround(view, [&](const UIViewRef& outer) {
    if (identifier.empty()) identifier = outer->accessibilityIdentifier().value_or("");
    if (label.empty()) label = labelOf(outer).value_or("");
    return !identifier.empty() && !label.empty();
  });
  std::vector<std::string> groups;
  for (const std::string& name : {identifier, label}) {
    const bool isNew = std::ranges::find(groups, name) == groups.end();
    if (isNew && !name.empty() && name.size() <= kLongestText) groups.push_back(name);
  }
  return groups;
}

// A way that is tried.
struct Candidate {
  Locator locator;
  bool isScoped = false;  // says in which of several places
  bool fitsElement = false;

  bool isUnique() const { return fitsElement && locator.matches == 1; }
};

// All that can be said of the view but its position, best first. Each says its class or its
// identifier.
std::vector<Candidate> candidates(const UIViewRef& view, ReachedBy way) {
  const std::string& className = view->getClass()->name();
  std::vector<Candidate> all;
  const auto add = [&](Text Criteria::*member, const Text& value) {
    if (!value || value->empty() || value->size() > kLongestText) return;
    Criteria find{.className = className, .visible = true};
    find.*member = *value;
    all.push_back({{std::move(find)}});
  };
  // What stands in more than one place is told by where.
  const auto addScoped = [&](std::size_t first, std::size_t last, Text Criteria::*scope,
                             const std::string& name) {
    for (std::size_t at = first; at < last; ++at) {
      all.push_back({{all[at].locator.find}, true});
      all.back().locator.find.*scope = name;
    }
  };
  if (const Text identifier = view->accessibilityIdentifier()) {
    all.push_back({{{.identifier = *identifier}}});
  }
  const Text text = lastingText(view);
  const Text label = labelOf(view);
  // The label of a tab bar may be the tab that is chosen.
  if (label != textOf(view)) add(&Criteria::label, label);
  add(&Criteria::text, text);
  add(&Criteria::placeholder, placeholderOf(view));
  const std::size_t named = all.size();
  const std::vector<std::string> groups = groupsOf(view);
  for (const std::string& group : groups) addScoped(0, named, &Criteria::group, group);
  const Text title = titleOfWindow(view);
  const bool isWindow = view->isKindOfClass(platform::uikit::UIWindow);
  if (title && !isWindow) addScoped(0, named, &Criteria::windowTitle, *title);
  if (way == ReachedBy::Keys && isEditable(view) && isFocused(view)) {
    all.push_back({{{.className = className, .focused = true}}});
  }
  add(&Criteria::className, className);
  const std::size_t plain = all.size();
  for (const std::string& group : groups) addScoped(plain - 1, plain, &Criteria::group, group);
  return all;
}

// One walk for all of them that are scoped, or are not.
void count(const UIViewRef& view, bool isScoped, std::vector<Candidate>& all) {
  std::vector<std::pair<Candidate*, Selector>> tried;
  Text identifier;
  for (Candidate& candidate : all) {
    if (candidate.isScoped != isScoped) continue;
    tried.emplace_back(&candidate, Selector(candidate.locator.find));
    if (candidate.locator.find.identifier) identifier = candidate.locator.find.identifier;
  }
  if (tried.empty()) return;
  const Clock::time_point start = Clock::now();
  const platform::Class ownClass = view->getClass();
  const std::string& className = ownClass->lowercaseName();
  const auto mayFit = [&](const UIViewRef& other) {
    return other->getClass() == ownClass || other->getClass()->lowercaseName() == className ||
           (identifier && other->accessibilityIdentifier() == identifier);
  };
  for (const platform::UIWindowRef& window : shownWindows()) {
    surveyWindow(window, [&](const Seen& seen) {
      if (!mayFit(seen.view)) return true;
      for (auto& [candidate, selector] : tried) {
        if (!selector.fits(seen)) continue;
        ++candidate->locator.matches;
        candidate->fitsElement = candidate->fitsElement || seen.view == view;
      }
      return true;
    });
  }
  const double took = seconds(Clock::now() - start) * 1000;
  for (auto& [candidate, selector] : tried) candidate->locator.milliseconds = took;
}

// Those that say in which of several places, behind a way that is unique without.
void dropNeedless(std::vector<Candidate>& all) {
  const auto unique = std::ranges::find_if(all, &Candidate::isUnique);
  if (unique == all.end()) return;
  all.erase(std::remove_if(std::next(unique), all.end(), std::mem_fn(&Candidate::isScoped)),
            all.end());
}

// In its window, as far as that has a title.
std::optional<Locator> positionLocator(const UIViewRef& view) {
  Criteria find{.xpath = positionOf(view), .windowTitle = titleOfWindow(view)};
  if (find.xpath->empty()) return std::nullopt;
  const Clock::time_point start = Clock::now();
  std::vector<UIViewRef> pages;
  const std::vector<Match> matches = Selector(find).find(0, &pages);
  const double took = seconds(Clock::now() - start) * 1000;
  const bool fits = std::ranges::find(matches, view, &Match::view) != matches.end();
  if (!fits) return std::nullopt;
  return Locator{std::move(find), matches.size(), took};
}

}  // namespace

std::vector<Locator> locatorsOf(const UIViewRef& view, ReachedBy way) {
  const std::shared_ptr<void> still = platform::current().application->holdStill();
  std::vector<Candidate> all = candidates(view, way);
  for (const bool isScoped : {false, true}) {
    count(view, isScoped, all);
    dropNeedless(all);
  }
  std::vector<Locator> locators;
  for (Candidate& one : all) {
    if (one.fitsElement) locators.push_back(std::move(one.locator));
  }
  if (std::optional<Locator> position = positionLocator(view)) {
    locators.push_back(*std::move(position));
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
    locator.find.write(text);
    text.add("matches", static_cast<long>(locator.matches));
    text.add("ms", std::round(locator.milliseconds * 1000) / 1000);
    text.close('}');
  }
  text.close(']');
  return text.take();
}

}  // namespace tarni::session
