#include "agent/session/screen/Selector.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "agent/core/state/Utilities_Text.h"
#include "agent/elements/ViewKinds.h"
#include "agent/session/screen/Description.h"
#include "agent/session/screen/Elements.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIWindow.h"

namespace tarni::session {

using platform::UIViewRef;

namespace {

constexpr Parameter kMembers[] = {
    {"identifier", Kind::Text, kOptional, "Its accessibility identifier."},
    {"label", Kind::Text, kOptional, "Its accessibility label."},
    {"text", Kind::Text, kOptional, "The text that it shows, all of it."},
    {"textContains", Kind::Text, kOptional, "A part of that text, in any case."},
    {"placeholder", Kind::Text, kOptional, "What an empty field asks for."},
    {"class", Kind::Text, kOptional, "The name of its class, in any case."},
    {"kind", Kind::Text, kOptional, "The name of its class or of one that it is a kind of."},
    {"xpath", Kind::Text, kOptional,
     "Its position from its window (or from `within`) down, as `tarni tree` prints it: "
     "`\\UIWindowContent[0]\\UIButton[1]`; in a page from its root: "
     "`\\HTML[0]\\BODY[0]\\BUTTON[1]`."},
    {"visible", Kind::Flag, kOptional, "Whether anything of it is to be seen."},
    {"focused", Kind::Flag, kOptional, "Whether it has the focus."},
    {"group", Kind::Text, kOptional,
     "The label or the identifier of something that it stands in, below the window."},
    {"windowTitle", Kind::Text, kOptional, "The title of the window that it stands in."},
    {"within", Kind::Integer, kOptional, "The handle of a window or an element that it stands in."},
};

template <typename Value>
std::optional<Value> member(const Json& selector, const char* name) {
  const auto found = selector.find(name);
  if (found == selector.end()) return std::nullopt;
  try {
    return found->template get<Value>();
  } catch (const Json::exception&) {
    throw SessionError(errors::kInvalidArgument,
                       "\"" + std::string(name) + "\" of a selector has the wrong type");
  }
}

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
  for (UIViewRef outer = view->superview(); outer; outer = outer->superview()) {
    if (outer->isKindOfClass(platform::uikit::UIWindow)) return false;
    if (outer->accessibilityIdentifier() == group || labelOf(outer) == group) return true;
  }
  return false;
}

UIViewRef viewAt(UIViewRef root, std::string_view path) {
  while (root && !path.empty()) root = childAt(root, takeStep(path));
  return root;
}

}  // namespace

std::span<const Parameter> Selector::parameters() {
  return kMembers;
}

Selector::Selector(const Json& selector)
    : members_(Json::object()),
      identifier_(member<std::string>(selector, "identifier")),
      label_(member<std::string>(selector, "label")),
      text_(member<std::string>(selector, "text")),
      textContains_(member<std::string>(selector, "textContains")),
      placeholder_(member<std::string>(selector, "placeholder")),
      class_(member<std::string>(selector, "class")),
      kind_(member<std::string>(selector, "kind")),
      xpath_(member<std::string>(selector, "xpath")),
      group_(member<std::string>(selector, "group")),
      windowTitle_(member<std::string>(selector, "windowTitle")),
      visible_(member<bool>(selector, "visible")),
      focused_(member<bool>(selector, "focused")),
      within_(member<long>(selector, "within")) {
  for (const Parameter& parameter : kMembers) {
    const auto found = selector.find(parameter.name);
    if (found != selector.end()) members_[std::string(parameter.name)] = *found;
  }
  if (members_.empty()) {
    throw SessionError(
        errors::kInvalidSelector,
        "a selector says at least one of identifier, label, text, textContains, placeholder, "
        "class, kind, xpath, visible, focused, group, windowTitle and within");
  }
  if (xpath_ && !xpath_->starts_with('\\')) {
    throw SessionError(errors::kInvalidSelector,
                       "\"" + *xpath_ + "\" is no position like \\UIWindowContent[0]\\UIButton[1]");
  }
  if (class_) class_ = platform::lowercase(*class_);
  if (textContains_) textContains_ = Utilities::lowercaseString(*textContains_);
}

// What costs least is asked first.
bool Selector::matches(const Seen& seen) const {
  const UIViewRef& view = seen.view;
  if (class_ && view->getClass()->lowercaseName() != *class_) return false;
  if (kind_ && !isKindNamed(view->getClass(), *kind_)) return false;
  if (identifier_ && view->accessibilityIdentifier() != *identifier_) return false;
  if (text_ && textOf(view) != *text_) return false;
  if (textContains_ && !Utilities::containsLowercase(textOf(view).value_or(""), *textContains_)) {
    return false;
  }
  if (placeholder_ && placeholderOf(view) != *placeholder_) return false;
  if (label_ && view->accessibilityLabel() != *label_) return false;
  if (focused_ && view->isFirstResponder() != *focused_) return false;
  if (visible_ && seen.place().isVisible != *visible_) return false;
  if (group_ && !standsIn(view, *group_)) return false;
  return !windowTitle_ || titleOfWindow(view) == *windowTitle_;
}

bool Selector::isPositionInPage() const {
  return xpath_ && xpath_->starts_with("\\HTML[");
}

std::vector<Match> Selector::byPath() const {
  std::vector<UIViewRef> roots;
  if (within_) {
    roots.push_back(Elements::sharedInstance().viewOf(*within_));
  } else {
    roots = windowsInReachFirst();
  }
  std::vector<Match> found;
  for (const UIViewRef& root : roots) {
    const UIViewRef view = viewAt(root, *xpath_);
    if (!view) continue;
    const Surroundings outer = Surroundings::inside(view->superview());
    const Seen seen{view, root, 0, 0, outer};
    if (matches(seen)) found.push_back({view, seen.place()});
  }
  return found;
}

std::vector<Match> Selector::find(std::size_t limit, std::vector<UIViewRef>* pages) const {
  const std::shared_ptr<void> still = platform::current().application->holdStill();
  const PageElement* const inPage =
      within_ ? Elements::sharedInstance().pageElementOf(*within_) : nullptr;
  if (inPage) {
    if (UIViewRef page = inPage->webView.lock()) pages->push_back(std::move(page));
    return {};
  }
  if (xpath_ && !isPositionInPage()) {
    std::vector<Match> found = byPath();
    if (limit > 0 && found.size() > limit) found.resize(limit);
    return found;
  }
  std::vector<Match> found;
  const auto take = [&](const Seen& seen) {
    if (isPage(seen.view)) pages->push_back(seen.view);
    if (!xpath_ && matches(seen)) found.push_back({seen.view, seen.place()});
    return limit == 0 || found.size() < limit;
  };
  if (within_) {
    const UIViewRef outer = Elements::sharedInstance().viewOf(*within_);
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
  Json wanted = members_;
  wanted.erase("within");
  wanted.erase("windowTitle");
  if (class_) wanted["class"] = *class_;
  if (textContains_) wanted["textContains"] = *textContains_;
  const PageElement* const outer =
      within_ ? Elements::sharedInstance().pageElementOf(*within_) : nullptr;
  const long within = outer ? outer->node : 0;
  for (const UIViewRef& page : pages) {
    if (windowTitle_ && titleOfWindow(page) != *windowTitle_) continue;
    const std::size_t room = limit == 0 ? 0 : limit - found.size();
    Json given = wanted;
    std::vector<PageNode> nodes = co_await nodesThatFit(page, std::move(given), within, room);
    std::ranges::move(nodes, std::back_inserter(found));
    if (limit > 0 && found.size() >= limit) break;
  }
  co_return found;
}

std::string Selector::inWords() const {
  return jsonText(members_);
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
