#include "agent/session/screen/Conditions.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "agent/session/protocol/Names.h"
#include "agent/session/screen/Description.h"
#include "agent/session/screen/Elements.h"
#include "platform/UIKit/UIWindow.h"

namespace tarni::session {

using platform::UIViewRef;

namespace {

constexpr std::array<std::string_view, 7> kConditionMembers{
    "element", "find", "window", "is", "textIs", "textContains", "count"};
constexpr std::array<std::string_view, 10> kStates{
    "there",   "gone",      "visible", "enabled", "disabled",
    "checked", "unchecked", "focused", "textIs",  "textContains"};

[[noreturn]] void refuseCondition(const std::string& why) {
  throw SessionError(errors::kInvalidArgument, "a condition " + why);
}

// What conditions ask of a view, called as in its description.
Json toldOf(const Match& match) {
  Json told = {{"element", Elements::sharedInstance().handleOf(match.view)},
               {"text", textOf(match.view).value_or("")},
               {"visible", match.place.isVisible},
               {"enabled", match.view->isUserInteractionEnabled()},
               {"focused", isFocused(match.view)}};
  if (const auto checked = isChecked(match.view)) told["checked"] = *checked;
  return told;
}

// Of the windows that have one.
std::vector<std::string> shownTitles() {
  std::vector<std::string> titles;
  for (const UIViewRef& view : shownWindows()) {
    const auto window = platform::as<platform::UIWindow>(view);
    if (auto title = window ? window->windowTitle() : std::nullopt) {
      titles.push_back(*std::move(title));
    }
  }
  return titles;
}

// Null for an element that has gone; one that never was is an error.
Json toldOf(Handle handle) {
  try {
    UIViewRef view = Elements::sharedInstance().viewOf(handle);
    const Place place = placeOf(view);
    return toldOf(Match{std::move(view), place});
  } catch (const SessionError& error) {
    if (error.kind().code != errors::kStaleElement.code) throw;
    return nullptr;
  }
}

}  // namespace

Condition::Condition(const Json& text) : text_(text) {
  if (!text.is_object()) refuseCondition("is an object");
  requireKnownMembers("a condition", text, kConditionMembers);
  if (text.contains("window")) {
    const Json is = text.value("is", Json("there"));
    if (!text["window"].is_string()) refuseCondition("names a window by a part of its title");
    if (is != "there" && is != "gone") refuseCondition("has \"is\" of a window: there or gone");
    return;
  }
  if (text.contains("element")) {
    if (!text["element"].is_number_integer()) refuseCondition("has the handle of an element");
    element_ = text["element"].get<long>();
  } else if (text.contains("find") && text["find"].is_object()) {
    Criteria::requireNoOthers(text["find"]);
    selector_.emplace(Criteria::from(text["find"]));
  } else {
    refuseCondition("has \"element\" (a handle), \"find\" (a selector) or \"window\" (a title)");
  }
  if (text.contains("count")) {
    if (!selector_ || !text["count"].is_number_integer())
      refuseCondition("counts what \"find\" finds");
    return;
  }
  const Json state = text.value("is", Json("there"));
  if (state.is_string()) state_ = state.get<std::string>();
  if (text.contains("textIs")) state_ = "textIs";
  if (text.contains("textContains")) state_ = "textContains";
  if (std::ranges::find(kStates, state_) == kStates.end()) {
    refuseCondition(
        "has \"is\": there, gone, visible, enabled, disabled, checked, unchecked or focused; or "
        "\"textIs\", \"textContains\" or \"count\"");
  }
  if (state_.starts_with("text") && !text[state_].is_string())
    refuseCondition("compares with a text");
}

platform::Task<bool> Condition::askPages() {
  inPages_.clear();
  const PageElement* const one =
      element_ ? Elements::sharedInstance().pageElementOf(*element_) : nullptr;
  if (one) {
    try {
      const std::string description = co_await descriptionOf(*one);
      inPages_.push_back(Json::parse(description));
    } catch (const SessionError& error) {
      if (error.kind().code != errors::kStaleElement.code) throw;
    }
    co_return true;
  }
  if (!selector_ || !selector_->fitsPages()) co_return false;
  std::vector<UIViewRef> pages;
  selector_->find(0, &pages);
  const bool hasPages = !pages.empty();
  const std::vector<PageNode> nodes = co_await selector_->findIn(std::move(pages), 0);
  for (const PageNode& node : nodes) inPages_.push_back(Json::parse(node.description));
  co_return hasPages;
}

std::vector<Json> Condition::matches(std::size_t limit) const {
  std::vector<Json> found;
  if (selector_) {
    std::vector<UIViewRef> pages;
    for (const Match& match : selector_->find(limit, &pages)) found.push_back(toldOf(match));
    hasMetPages_ = !pages.empty() && selector_->fitsPages();
  } else if (!Elements::sharedInstance().pageElementOf(*element_)) {
    Json told = toldOf(*element_);
    if (!told.is_null()) found.push_back(std::move(told));
  }
  std::ranges::copy(inPages_, std::back_inserter(found));
  return found;
}

bool Condition::windowHolds() const {
  const auto& part = text_["window"].get_ref<const std::string&>();
  const auto hasPart = [&part](const std::string& title) {
    return title.find(part) != std::string::npos;
  };
  const bool isThere = std::ranges::any_of(shownTitles(), hasPart);
  return isThere != (text_.value("is", Json("there")) == "gone");
}

bool Condition::holds() const {
  if (text_.contains("window")) return windowHolds();
  if (text_.contains("count")) return Json(matches(0).size()) == text_["count"];
  // Of what is found several times, one is enough.
  const std::vector<Json> found = matches(state_ == "there" || state_ == "gone" ? 1 : 0);
  if (state_ == "gone") return found.empty();
  return std::ranges::any_of(found, [this](const Json& match) {
    if (state_ == "there") return true;
    if (state_ == "disabled") return match["enabled"] == false;
    if (state_ == "unchecked") return match.value("checked", Json()) == false;
    if (!state_.starts_with("text")) return match.value(state_, Json()) == true;
    const auto& text = match["text"].get_ref<const std::string&>();
    const auto& wanted = text_[state_].get_ref<const std::string&>();
    return state_ == "textIs" ? text == wanted : text.find(wanted) != std::string::npos;
  });
}

Json Condition::instead() const {
  constexpr std::size_t kEnough = 5;
  Json told = {{"condition", text_}, {"holds", holds()}};
  if (text_.contains("window")) {
    told["windows"] = shownTitles();
    return told;
  }
  std::vector<Json> found = matches(0);
  told["found"] = found.size();
  if (found.size() > kEnough) found.resize(kEnough);
  told["elements"] = std::move(found);
  return told;
}

}  // namespace tarni::session
