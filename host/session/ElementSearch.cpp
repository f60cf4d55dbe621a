#include "host/session/ElementSearch.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>

namespace tarni::host {

using nlohmann::ordered_json;

namespace {

double numberIn(const ordered_json& object, const char* key) {
  return std::strtod(textIn(object, key).c_str(), nullptr);
}

bool isTrue(const ordered_json& object, const char* key) {
  return textIn(object, key) == "true";
}

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

// The recorded one of its class, when there are so many.
const ElementOnScreen* recordedOne(const RecordedStep& step,
                                   const std::vector<ElementOnScreen>& all) {
  return step.index && *step.index < all.size() ? &all[*step.index] : nullptr;
}

bool mayBeGuessed(const RecordedStep& step, const std::vector<ElementOnScreen>& all, Guess guess) {
  const auto* const element = recordedOne(step, all);
  if (guess == Guess::none || element == nullptr || !element->isVisible) return false;
  if (guess == Guess::any) return true;
  return step.text.empty() && (element->text.empty() || element->isEditable) &&
         rounded(element->rectangle.width) == step.width &&
         rounded(element->rectangle.height) == step.height;
}

}  // namespace

ElementOnScreen ElementOnScreen::fromJson(const ordered_json& description) {
  ElementOnScreen element;
  element.id = textIn(description, "elementID");
  element.text = textIn(description, "text");
  element.picture = textIn(description, "imageBase64");
  const auto frame = description.value("rectangle", ordered_json());
  element.rectangle = {numberIn(frame, "x"), numberIn(frame, "y"), numberIn(frame, "width"),
                       numberIn(frame, "height")};
  element.isVisible = isTrue(description, "isVisibleInViewHierarchy") &&
                      isTrue(description, "isVisibleInWindowFrame");
  element.isTappable = isTrue(description, "isProbablyTappable");
  element.isEnabled = isTrue(description, "isUserInteractionEnabled");
  element.isEditable = isTrue(description, "isEditable");
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
    case LocatorKind::position:
      return "position";
    case LocatorKind::text:
      return "class and text";
    case LocatorKind::index:
      break;
  }
  return "class and index";
}

std::optional<Located> ElementSearch::look(const RecordedStep& step, Guess guess) {
  if (step.isInPage) return lookInPage(step, guess);
  std::optional<Features> features;
  if (!step.xpath.empty()) {
    if (const auto id = only(step, "xpath", step.xpath); !id.empty()) features = featuresOf(id);
  }
  const auto all = elementsOf(step.className);
  if (const auto found = atPosition(step, features, all)) {
    return Located{LocatorKind::position, *found};
  }
  if (const auto found = byText(step, all)) return Located{LocatorKind::text, *found};
  if (!mayBeGuessed(step, all, guess)) return std::nullopt;
  // Searching has made the identifiers of the first description void.
  const auto now = elementsOf(step.className);
  if (!mayBeGuessed(step, now, guess)) return std::nullopt;
  return Located{LocatorKind::index, *recordedOne(step, now)};
}

std::optional<Located> ElementSearch::lookInPage(const RecordedStep& step, Guess guess) {
  if (const auto id = only(step, "xpath", step.xpath); !id.empty()) {
    return Located{LocatorKind::position, inPage(id, step.text)};
  }
  if (const auto id = only(step, "text", step.text); !step.text.empty() && !id.empty()) {
    return Located{LocatorKind::text, inPage(id, step.text)};
  }
  if (guess != Guess::any || !step.index) return std::nullopt;
  const auto ids = client_.call({"findelements", step.className}).elementIds();
  if (*step.index >= ids.size()) return std::nullopt;
  return Located{LocatorKind::index, inPage(ids[*step.index], step.text)};
}

std::vector<ElementOnScreen> ElementSearch::elementsLike(const RecordedStep& step) {
  return step.isInPage ? elementsInPage(step.className) : elementsOf(step.className);
}

ElementSearch::Elements ElementSearch::elementsInPage(const std::string& tag) {
  Elements elements;
  for (const auto& id : client_.call({"findelements", tag}).elementIds()) {
    elements.push_back(inPage(id, ask("gettext", id)));
  }
  return elements;
}

// Hidden views count as well for the index among a class, so the search, which leaves them out,
// cannot tell it.
ElementSearch::Elements ElementSearch::elementsOf(const std::string& className) {
  Elements elements;
  for (const auto& entry : client_.call({"ai_findelements", className}).entries()) {
    if (entry.is_object()) elements.push_back(ElementOnScreen::fromJson(entry));
  }
  return elements;
}

ElementSearch::Found ElementSearch::atPosition(const RecordedStep& step,
                                               const std::optional<Features>& features,
                                               const Elements& all) {
  if (!features) return std::nullopt;
  const auto* const there = withFeatures(*features, step, all);
  if (there == nullptr || !there->isVisible) return std::nullopt;
  // A text field is recorded with its placeholder and shows what was typed.
  const bool isTextKnown = !step.text.empty() && step.isTextItsOwn && !there->isEditable;
  if (isTextKnown && there->text != step.text) return std::nullopt;
  // Several elements may look the same: only the position tells which one is meant.
  const auto id = only(step, "xpath", step.xpath);
  if (id.empty()) return std::nullopt;
  auto element = *there;
  element.id = id;
  return element;
}

ElementSearch::Found ElementSearch::byText(const RecordedStep& step, const Elements& all) {
  if (step.text.empty() || !step.isTextItsOwn) return std::nullopt;
  const auto fits = [&step](const ElementOnScreen& element) {
    return element.isVisible && element.text == step.text;
  };
  const auto count = std::count_if(all.begin(), all.end(), fits);
  if (count == 0) return byRecordedText(step, all);
  if (count == 1) return *std::find_if(all.begin(), all.end(), fits);
  const auto* const recorded = recordedOne(step, all);
  return recorded != nullptr && fits(*recorded) ? Found(*recorded) : std::nullopt;
}

ElementSearch::Found ElementSearch::byRecordedText(const RecordedStep& step, const Elements& all) {
  const auto id = only(step, "text", step.text);
  if (id.empty()) return std::nullopt;
  const auto* const found = withFeatures(featuresOf(id), step, all);
  if (found == nullptr || !found->isVisible) return std::nullopt;
  auto element = *found;
  element.id = id;
  return element;
}

std::string ElementSearch::only(const RecordedStep& step, const char* accessor,
                                const std::string& value) {
  const auto ids = client_.call({"findelements", step.className, accessor, value}).elementIds();
  return ids.size() == 1 ? ids.front() : "";
}

ElementSearch::Features ElementSearch::featuresOf(const std::string& id) {
  return {ask("gettext", id), ask("getwidth", id), ask("getheight", id)};
}

const ElementOnScreen* ElementSearch::withFeatures(const Features& features,
                                                   const RecordedStep& step, const Elements& all) {
  const auto fits = [&features](const ElementOnScreen& element) {
    return element.text == features.text && rounded(element.rectangle.width) == features.width &&
           rounded(element.rectangle.height) == features.height;
  };
  const auto* const recorded = recordedOne(step, all);
  if (recorded != nullptr && fits(*recorded)) return recorded;
  const auto visible = [&fits](const auto& element) { return element.isVisible && fits(element); };
  const auto found = std::find_if(all.begin(), all.end(), visible);
  return found != all.end() ? &*found : nullptr;
}

std::string ElementSearch::ask(const char* function, const std::string& id) {
  return client_.call({function, "", "", id}).output().value_or("");
}

}  // namespace tarni::host
