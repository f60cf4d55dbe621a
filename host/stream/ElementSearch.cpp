#include "host/stream/ElementSearch.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "host/guard/Printable.h"
#include "host/stream/PortTree.h"

namespace tarni::host {

namespace {

// As the agent answers "getwidth".
std::string rounded(double length) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.f", length);
  return text.data();
}

// What the page's scripts find can be acted on.
ElementOnScreen inPage(const std::string& id, const std::string& text) {
  ElementOnScreen element;
  element.id = id;
  element.text = text;
  element.isVisible = element.isTappable = element.isEnabled = true;
  return element;
}

// The one at the recorded index of its class, when a person could see it.
const ElementOnScreen* atIndex(const StreamStep& step, const std::vector<ElementOnScreen>& all) {
  const bool isThere = step.index && *step.index < all.size() && all[*step.index].isVisible;
  return isThere ? &all[*step.index] : nullptr;
}

const ElementOnScreen* atPlace(const StreamStep& step, const std::vector<ElementOnScreen>& all) {
  const auto stands = [&step](const auto& element) { return element.xpath == step.xpath; };
  const auto found = std::ranges::find_if(all, stands);
  return found != all.end() && !step.xpath.empty() ? &*found : nullptr;
}

// `a UIButton stands at index 3 and shows "OK": --guess takes it`
std::string proposal(const StreamStep& step, const ElementOnScreen& element) {
  const auto shown = element.text.empty() ? " without a text" : "";
  return "a " + step.className + shown + " stands at index " + std::to_string(*step.index) +
         (element.text.empty() ? "" : " and shows " + inQuotes(element.text)) +
         ": --guess takes it";
}

// `3 fit and none stands at the recorded position: index 1 (80x20 at 8,40), index 2 (…), …`
std::string choice(const std::vector<const ElementOnScreen*>& several,
                   const std::vector<ElementOnScreen>& all) {
  constexpr std::size_t kMost = 10;
  auto words = std::to_string(several.size()) + " fit and none stands at the recorded position: ";
  for (std::size_t i = 0; i < std::min(kMost, several.size()); ++i) {
    const auto& frame = several[i]->rectangle;
    words += (i > 0 ? ", index " : "index ") + std::to_string(several[i] - all.data()) + " (" +
             rounded(frame.width) + "x" + rounded(frame.height) + " at " + rounded(frame.x) + "," +
             rounded(frame.y) + ")";
  }
  return words + (several.size() > kMost ? ", …" : "");
}

}  // namespace

ElementOnScreen ElementOnScreen::fromJson(const Json& description) {
  ElementOnScreen element;
  element.id = textIn(description, "elementID");
  element.text = textIn(description, "text");
  element.picture = textIn(description, "imageBase64");
  const auto& frame = objectIn(description, "rectangle");
  element.rectangle = {numberOfText(frame, "x"), numberOfText(frame, "y"),
                       numberOfText(frame, "width"), numberOfText(frame, "height")};
  element.isVisible = isTextTrue(description, "isVisibleInViewHierarchy") &&
                      isTextTrue(description, "isVisibleInWindowFrame");
  element.isTappable = isTextTrue(description, "isProbablyTappable");
  element.isEnabled = isTextTrue(description, "isUserInteractionEnabled");
  element.isEditable = isTextTrue(description, "isEditable");
  return element;
}

std::string ElementOnScreen::description() const {
  const auto words = text.empty() ? std::string("without a text") : inQuotes(text);
  if (!isVisible) return words + " (hidden)";
  if (!isEnabled) return words + " (disabled)";
  return isTappable ? words : words + " (covered)";
}

const char* nameOf(LocatorKind kind) {
  switch (kind) {
    case LocatorKind::Position:
      return "position";
    case LocatorKind::Text:
      return "class and text";
    case LocatorKind::Index:
      break;
  }
  return "class and index";
}

Look ElementSearch::look(const StreamStep& step, bool mayGuess) {
  if (step.isInPage) return lookInPage(step, mayGuess);
  const auto findings = findingsOf(step, "");
  Look look;
  look.sameClass = elementsOf(step.className, "");
  look.located = sureOne(step, findings, look.sameClass, "");
  if (!look.located) look.located = besideKeyWindow(step);
  if (look.located) return look;
  // The search has made the identifiers void.
  if (mayGuess) look.sameClass = elementsOf(step.className, "");
  if (const auto* const guessed = atIndex(step, look.sameClass); mayGuess && guessed != nullptr) {
    look.located = {LocatorKind::Index, *guessed};
  } else {
    look.whyNot = whyNot(step, findings, look.sameClass);
  }
  return look;
}

std::optional<Located> ElementSearch::besideKeyWindow(const StreamStep& step) {
  const auto findings = findingsOf(step, kAnyWindow);
  const auto id = idInAnyWindow(step);
  if (id.empty()) return std::nullopt;
  return sureOne(step, findings, elementsOf(step.className, id), kAnyWindow);
}

// Before the elements are described, since searching makes the identifiers of descriptions void.
ElementSearch::Findings ElementSearch::findingsOf(const StreamStep& step,
                                                  const std::string& window) {
  Findings findings;
  if (!step.text.empty() && step.isTextItsOwn) {
    for (const auto& id : find(step, "text", step.text, window)) {
      findings.withText.push_back(featuresOf(id));
    }
  }
  if (const auto id = idAtPosition(step, window); !id.empty()) findings.atPosition = featuresOf(id);
  return findings;
}

// All views are described: only so their places in the tree are known, and hidden views count as
// well for the index among a class.
ElementSearch::Elements ElementSearch::elementsOf(const std::string& className,
                                                  const std::string& window) {
  PortTree tree;
  Elements elements;
  for (const auto& description :
       client_.call({.functionName = "ai_findelements", .window = window}).entries()) {
    tree.goTo(description);
    if (textIn(description, "elementType") != className) continue;
    elements.push_back(ElementOnScreen::fromJson(description));
    elements.back().xpath = tree.xpath().value_or("");
  }
  return elements;
}

std::optional<Located> ElementSearch::sureOne(const StreamStep& step, const Findings& findings,
                                              const Elements& all, const std::string& window) {
  const auto isSure = [&](const ElementOnScreen* element) {
    return element != nullptr && element->isVisible && !speaksAgainst(step, findings, *element);
  };
  if (const auto* const kept = keptPosition(step, findings, all); isSure(kept)) {
    // Several elements may look the same: only the position tells which one is meant. Where it no
    // longer does, the screen changes, and the search has made all other identifiers void.
    auto element = *kept;
    element.id = idAtPosition(step, window);
    if (element.id.empty()) return std::nullopt;
    return Located{LocatorKind::Position, element};
  }
  const auto named = namesakes(step, findings, all);
  if (named.size() == 1) return Located{LocatorKind::Text, *named.front()};
  if (const auto* const there = atPlace(step, all); isSure(there)) {
    return Located{LocatorKind::Position, *there};
  }
  return std::nullopt;
}

// What a text field holds, and what an element is set to, is another thing than its recorded text.
bool ElementSearch::speaksAgainst(const StreamStep& step, const Findings& findings,
                                  const ElementOnScreen& element) {
  if (!step.isTextItsOwn) return false;
  if (step.text.empty()) {
    return !element.isEditable && !element.text.empty() && element.text != step.label;
  }
  if (!element.isEditable && element.text == step.text) return false;
  return std::ranges::find(findings.withText, featuresOf(element)) == findings.withText.end();
}

// The description of what the agent keeps the recorded position of.
const ElementOnScreen* ElementSearch::keptPosition(const StreamStep& step, const Findings& findings,
                                                   const Elements& all) {
  if (!findings.atPosition) return nullptr;
  const auto fits = [&findings](const ElementOnScreen& element) {
    return featuresOf(element) == *findings.atPosition;
  };
  for (const auto* const likely : {atPlace(step, all), atIndex(step, all)}) {
    if (likely != nullptr && fits(*likely)) return likely;
  }
  const auto found = std::ranges::find_if(
      all, [&fits](const auto& element) { return element.isVisible && fits(element); });
  return found != all.end() ? &*found : nullptr;
}

// Those on screen that are called as the recorded one was: by its text, or else by its label.
std::vector<const ElementOnScreen*> ElementSearch::namesakes(const StreamStep& step,
                                                             const Findings& findings,
                                                             const Elements& all) {
  std::vector<const ElementOnScreen*> named;
  if (!step.isTextItsOwn || (step.text.empty() && step.label.empty())) return named;
  for (const auto& element : all) {
    const bool isSo = step.text.empty() ? !element.isEditable && element.text == step.label
                                        : !speaksAgainst(step, findings, element);
    if (element.isVisible && isSo) named.push_back(&element);
  }
  return named;
}

std::string ElementSearch::whyNot(const StreamStep& step, const Findings& findings,
                                  const Elements& all) {
  const auto named = namesakes(step, findings, all);
  if (named.size() > 1) return choice(named, all);
  const auto* const proposed = atIndex(step, all);
  const auto* there = keptPosition(step, findings, all);
  if (there == nullptr) there = atPlace(step, all);
  const bool isHidden = std::ranges::any_of(all, [&](const ElementOnScreen& element) {
    return !element.isVisible && (!step.text.empty() || &element == there) &&
           !speaksAgainst(step, findings, element);
  });
  std::string words = isHidden ? "it is there, but not on screen" : "it is not on screen";
  if (there != nullptr && there != proposed && there->isVisible) {
    words += "; in its place stands " + there->description();
  }
  return proposed != nullptr ? words + "; " + proposal(step, *proposed) : words;
}

Look ElementSearch::lookInPage(const StreamStep& step, bool mayGuess) {
  const auto found = [&step](LocatorKind by, const std::string& id) {
    return Look{Located{by, inPage(id, step.text)}};
  };
  auto id = idAtPosition(step);
  if (!id.empty() && !step.text.empty()) {
    id = hasTextInPage(step, id) ? idAtPosition(step) : "";
  }
  if (!id.empty()) return found(LocatorKind::Position, id);
  const auto named = step.text.empty() ? std::vector<std::string>() : find(step, "text", step.text);
  if (named.size() == 1) return found(LocatorKind::Text, named.front());
  Look look;
  for (const auto& each : client_.call({"findelements", step.className}).elementIds()) {
    look.sameClass.push_back(inPage(each, ask("gettext", each)));
  }
  if (const auto* const guessed = atIndex(step, look.sameClass); mayGuess && guessed != nullptr) {
    look.located = {LocatorKind::Index, *guessed};
  } else {
    look.whyNot = named.size() > 1
                      ? std::to_string(named.size()) + " fit and none stands at its position"
                      : "it is not on the page";
    if (guessed != nullptr) look.whyNot += "; " + proposal(step, *guessed);
  }
  return look;
}

// What a field of a page shows is what it holds; the text it is known by can only be searched for.
bool ElementSearch::hasTextInPage(const StreamStep& step, const std::string& id) {
  const auto shown = ask("gettext", id);
  return std::ranges::any_of(find(step, "text", step.text), [&](const std::string& other) {
    return ask("gettext", other) == shown;
  });
}

std::vector<std::string> ElementSearch::find(const StreamStep& step, const char* accessor,
                                             const std::string& value, const std::string& window) {
  return client_.call({"findelements", step.className, accessor, value, "", window}).elementIds();
}

std::string ElementSearch::idInAnyWindow(const StreamStep& step) {
  if (!step.text.empty() && step.isTextItsOwn) {
    if (const auto ids = find(step, "text", step.text, kAnyWindow); !ids.empty()) {
      return ids.front();
    }
  }
  return idAtPosition(step, kAnyWindow);
}

std::string ElementSearch::idAtPosition(const StreamStep& step, const std::string& window) {
  if (step.xpath.empty()) return "";
  const auto ids = find(step, "xpath", step.xpath, window);
  return ids.size() == 1 ? ids.front() : "";
}

ElementSearch::Features ElementSearch::featuresOf(const std::string& id) {
  return {ask("gettext", id), ask("getwidth", id), ask("getheight", id)};
}

ElementSearch::Features ElementSearch::featuresOf(const ElementOnScreen& element) {
  return {element.text, rounded(element.rectangle.width), rounded(element.rectangle.height)};
}

std::string ElementSearch::ask(const char* function, const std::string& id) {
  return client_.call({function, "", "", id}).output().value_or("");
}

}  // namespace tarni::host
