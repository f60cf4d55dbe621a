#include "agent/session/screen/Selector.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "agent/core/state/Utilities_Text.h"
#include "agent/elements/ViewKinds.h"
#include "agent/session/screen/Description.h"
#include "agent/session/screen/Elements.h"
#include "platform/Foundation/Lowercase.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIWindow.h"

namespace tarni::session {

using platform::UIViewRef;

namespace {

bool isKindNamed(platform::Class cls, const std::string& name) {
  for (; cls; cls = cls->superclass()) {
    if (cls->name() == name) return true;
  }
  return false;
}

// The next step "\Class[index]" of the path, which is taken off.
struct PathStep {
  std::string_view name;
  long index = 0;
};

PathStep takeStep(std::string_view& path) {
  const std::size_t open = path.find('[');
  const std::size_t close = path.find(']');
  PathStep step;
  const bool isWhole = path.starts_with('\\') && open != std::string_view::npos &&
                       close != std::string_view::npos && open < close;
  if (isWhole) {
    step.name = path.substr(1, open - 1);
    const auto [end, error] =
        std::from_chars(path.data() + open + 1, path.data() + close, step.index);
    if (error == std::errc() && end == path.data() + close) {
      path.remove_prefix(close + 1);
      return step;
    }
  }
  throw SessionError(errors::kInvalidSelector,
                     "\"" + std::string(path) + "\" is no position like \\UIButton[0]");
}

UIViewRef childAt(const UIViewRef& parent, const PathStep& step) {
  long index = 0;
  for (const UIViewRef& view : parent->contents()) {
    if (view->getClass()->name() == step.name && index++ == step.index) return view;
  }
  return nullptr;
}

bool standsIn(const UIViewRef& view, const std::string& group) {
  return nearestAround(view, [&group](const UIViewRef& outer) {
           return outer->accessibilityIdentifier() == group || labelOf(outer) == group;
         }) != nullptr;
}

UIViewRef viewAt(const UIViewRef& root, std::string_view path) {
  UIViewRef view = root;
  while (view && !path.empty()) {
    const UIViewRef child = childAt(view, takeStep(path));
    if (child && view == root && standsElsewhere(child, root)) return nullptr;
    view = child;
  }
  return view;
}

}  // namespace

Selector::Selector(Criteria criteria)
    : criteria_(std::move(criteria)),
      className_(platform::lowercaseString(criteria_.className.value_or(""))),
      part_(platform::lowercaseString(criteria_.textContains.value_or(""))) {
  const auto& xpath = criteria_.xpath;
  if (xpath && !xpath->starts_with('\\')) {
    throw SessionError(errors::kInvalidSelector,
                       "\"" + *xpath + "\" is no position like \\UIWindowContent[0]\\UIButton[1]");
  }
}

// What costs least is asked first.
bool Selector::fits(const Seen& seen) const {
  const UIViewRef& view = seen.view;
  const Criteria& is = criteria_;
  if (is.className && view->getClass()->lowercaseName() != className_) return false;
  if (is.kind && !isKindNamed(view->getClass(), *is.kind)) return false;
  if (is.identifier && view->accessibilityIdentifier() != *is.identifier) return false;
  if (is.text && textOf(view) != *is.text) return false;
  if (is.textContains && !Utilities::containsLowercase(textOf(view).value_or(""), part_)) {
    return false;
  }
  if (is.placeholder && placeholderOf(view) != *is.placeholder) return false;
  if (is.label && view->accessibilityLabel() != *is.label) return false;
  if (is.focused && isFocused(view) != *is.focused) return false;
  if (is.selected && view->isSelected() != *is.selected) return false;
  if (is.visible && seen.place().isVisible != *is.visible) return false;
  if (is.group && !standsIn(view, *is.group)) return false;
  return !is.windowTitle || titleOfWindow(view) == *is.windowTitle;
}

bool Selector::isPositionInPage() const {
  return criteria_.xpath && criteria_.xpath->starts_with("\\HTML[");
}

std::vector<Match> Selector::byPath() const {
  std::vector<UIViewRef> roots;
  if (criteria_.within) {
    roots.push_back(Elements::sharedInstance().viewOf(*criteria_.within));
  } else {
    roots = windowsInReachFirst();
  }
  std::vector<Match> found;
  for (const UIViewRef& root : roots) {
    const UIViewRef view = viewAt(root, *criteria_.xpath);
    if (!view) continue;
    const Seen seen{view, root, 0, 0, nullptr};
    if (fits(seen)) found.push_back({view, seen.place()});
  }
  return found;
}

std::vector<Match> Selector::find(std::size_t limit, std::vector<UIViewRef>* pages) const {
  const std::shared_ptr<void> still = platform::current().application->holdStill();
  const auto& within = criteria_.within;
  const PageElement* const inPage =
      within ? Elements::sharedInstance().pageElementOf(*within) : nullptr;
  if (inPage) {
    if (UIViewRef page = inPage->webView.lock()) pages->push_back(std::move(page));
    return {};
  }
  if (criteria_.xpath && !isPositionInPage()) {
    std::vector<Match> found = byPath();
    if (limit > 0 && found.size() > limit) found.resize(limit);
    return found;
  }
  std::vector<Match> found;
  const auto take = [&](const Seen& seen) {
    if (isPage(seen.view)) pages->push_back(seen.view);
    if (!criteria_.xpath && fits(seen)) found.push_back({seen.view, seen.place()});
    return limit == 0 || found.size() < limit;
  };
  if (within) {
    const UIViewRef outer = Elements::sharedInstance().viewOf(*within);
    if (isPage(outer)) pages->push_back(outer);
    surveyBelow(outer, take);
    return found;
  }
  for (const platform::UIWindowRef& window : windowsInReachFirst()) {
    if (!surveyWindow(window, take)) break;
  }
  return found;
}

platform::Task<std::vector<PageNode>> Selector::findIn(std::vector<UIViewRef> pages,
                                                       std::size_t limit) const {
  std::vector<PageNode> found;
  if (!fitsPages()) co_return found;
  Criteria inPage = criteria_;
  inPage.within.reset();
  inPage.windowTitle.reset();
  if (inPage.className) inPage.className = className_;
  if (inPage.textContains) inPage.textContains = part_;
  const PageElement* const outer =
      criteria_.within ? Elements::sharedInstance().pageElementOf(*criteria_.within) : nullptr;
  const long within = outer ? outer->node : 0;
  for (const UIViewRef& page : pages) {
    if (criteria_.windowTitle && titleOfWindow(page) != *criteria_.windowTitle) continue;
    const std::size_t room = limit == 0 ? 0 : limit - found.size();
    Json given = inPage.asJson();
    std::vector<PageNode> nodes = co_await nodesThatFit(page, std::move(given), within, room);
    std::ranges::move(nodes, std::back_inserter(found));
    if (limit > 0 && found.size() >= limit) break;
  }
  co_return found;
}

std::string Selector::inWords() const {
  return jsonText(criteria_.asJson());
}

Result answerOf(const std::vector<Match>& matches, const std::vector<PageNode>& nodes) {
  JsonText text;
  text.open('[');
  for (const Match& match : matches) {
    text.open('{');
    describe(match.view, Elements::sharedInstance().handleOf(match.view), match.place, text);
    text.close('}');
  }
  for (const PageNode& node : nodes) text.raw(node.description);
  text.close(']');
  Result result;
  result.written.emplace_back("elements", text.take());
  return result;
}

}  // namespace tarni::session
