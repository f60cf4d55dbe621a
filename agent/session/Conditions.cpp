#include "agent/session/Conditions.h"

#include <algorithm>
#include <array>

#include "agent/session/Description.h"
#include "agent/session/Elements.h"
#include "platform/UIKit/UIWindow.h"

namespace tarni::session {

using platform::UIViewRef;

namespace {

constexpr std::array<std::string_view, 10> kStates{
    "there",   "gone",      "visible", "enabled", "disabled",
    "checked", "unchecked", "focused", "textIs",  "textContains"};

[[noreturn]] void refuseCondition(const std::string& why) {
  throw SessionError(errors::kInvalidArgument, "a condition " + why);
}

// Null for an element that has gone; one that never was is an error.
std::optional<Match> matchOf(long handle) {
  try {
    UIViewRef view = Elements::sharedInstance().viewOf(handle);
    const Place place = placeOf(view);
    return Match{std::move(view), place};
  } catch (const SessionError& error) {
    if (error.kind().code != errors::kStaleElement.code) throw;
    return std::nullopt;
  }
}

}  // namespace

Condition::Condition(const Json& text) : text_(text) {
  if (!text.is_object()) refuseCondition("is an object");
  if (text.contains("window")) {
    if (!text["window"].is_string()) refuseCondition("names a window by a part of its title");
    return;
  }
  if (text.contains("element")) {
    if (!text["element"].is_number_integer()) refuseCondition("has the handle of an element");
    element_ = text["element"].get<long>();
  } else if (text.contains("find") && text["find"].is_object()) {
    selector_.emplace(text["find"]);
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

std::vector<Match> Condition::matches(std::size_t limit) const {
  if (selector_) return selector_->find(limit);
  std::optional<Match> match = matchOf(*element_);
  if (!match) return {};
  return {*std::move(match)};
}

bool Condition::windowHolds() const {
  const auto& part = text_["window"].get_ref<const std::string&>();
  const bool isThere = std::ranges::any_of(shownWindows(), [&part](const UIViewRef& view) {
    const auto window = platform::as<platform::UIWindow>(view);
    const auto title = window ? window->windowTitle() : std::nullopt;
    return title && title->find(part) != std::string::npos;
  });
  return isThere != (text_.value("is", Json("there")) == "gone");
}

bool Condition::holds() const {
  if (text_.contains("window")) return windowHolds();
  if (text_.contains("count")) return Json(matches(0).size()) == text_["count"];
  // Of what is found several times, one is enough.
  const std::vector<Match> found = matches(state_ == "there" || state_ == "gone" ? 1 : 0);
  if (state_ == "gone") return found.empty();
  return std::ranges::any_of(found, [this](const Match& match) {
    const UIViewRef& view = match.view;
    if (state_ == "visible") return match.place.isVisible;
    if (state_ == "enabled") return view->isUserInteractionEnabled();
    if (state_ == "disabled") return !view->isUserInteractionEnabled();
    if (state_ == "checked") return isChecked(view) == true;
    if (state_ == "unchecked") return isChecked(view) == false;
    if (state_ == "focused") return view->isFirstResponder();
    if (state_ == "there") return true;
    const std::string text = textOf(view).value_or("");
    const auto& wanted = text_[state_].get_ref<const std::string&>();
    return state_ == "textIs" ? text == wanted : text.find(wanted) != std::string::npos;
  });
}

Json Condition::instead() const {
  constexpr std::size_t kEnough = 5;
  Json told = {{"condition", text_}, {"holds", holds()}};
  if (text_.contains("window")) return told;
  const std::vector<Match> found = matches(0);
  told["found"] = found.size();
  Json elements = Json::array();
  for (const Match& match : found) {
    if (elements.size() == kEnough) break;
    elements.push_back({{"element", Elements::sharedInstance().handleOf(match.view)},
                        {"text", textOf(match.view).value_or("")},
                        {"visible", match.place.isVisible},
                        {"enabled", match.view->isUserInteractionEnabled()}});
  }
  told["elements"] = std::move(elements);
  return told;
}

}  // namespace tarni::session
