#include "tests/controls/Hand.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace tarni::test {
namespace {

using Words = std::vector<std::string>;

void append(Words& words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
}

Words wordsFor(const Act& act) {
  static const std::map<std::string, Words> kWords = {
      {"click", {"click", "1"}},           {"right-click", {"click", "3"}},
      {"wheel", {"click", "5"}},           {"hover", {}},
      {"type", {"type", "--delay", "20"}}, {"press", {"key"}},
      {"drag", {"mousedown", "1"}}};
  Words words = kWords.at(act.verb);
  if (!act.text.empty()) words.push_back(act.text);
  if (act.verb != "drag") return words;
  for (int step = 1; step <= 4; ++step) {
    append(words,
           {"sleep", "0.02", "mousemove_relative", "--", std::to_string(act.pixels / 4), "0"});
  }
  append(words, {"sleep", "0.02", "mouseup", "1"});
  return words;
}

}  // namespace

Hand::Hand(const Desktop& scouted, const Desktop& recorded, const Playback& scout)
    : displays_{&scouted, &recorded}, scout_(scout) {
  // A window system may show a window a while after the program does.
  const auto isThere = [&] { return !(page_ = elements()).empty() && !recorded.windows().empty(); };
  if (eventually(isThere)) return;
  throw std::runtime_error("the page is not there");
}

void Hand::act(const Act& act) const {
  Words words;
  if (act.target.kind == Target::Kind::Window) {
    for (const Desktop* const display : displays_) display->arrange();
  }
  if (act.isOfPointer()) {
    std::optional<Rectangle> found;
    if (!eventually([&] { return (found = find(act.target)).has_value(); })) {
      throw std::runtime_error("nothing shows \"" + act.target.text + "\"");
    }
    // A button that is pressed the moment the pointer comes may hit what has not seen it come.
    append(words,
           {"mousemove", std::to_string(static_cast<int>(found->x + found->width * act.target.x)),
            std::to_string(static_cast<int>(found->y + found->height * act.target.y)), "sleep",
            "0.05"});
  }
  append(words, wordsFor(act));
  for (const Desktop* const display : displays_) display->act(words);
}

std::optional<Hand::Rectangle> Hand::find(const Target& target) const {
  if (target.kind == Target::Kind::Window) {
    const auto called = displays_.front()->windows(target.text);
    return called.empty() ? std::nullopt : std::optional(called.front());
  }
  if (const auto inFront = find(target, elements())) return inFront;
  return find(target, page_);
}

std::optional<Hand::Rectangle> Hand::find(const Target& target, const std::vector<Element>& all) {
  const auto named = std::ranges::find(all, target.text, &Element::text);
  if (named == all.end()) return std::nullopt;
  if (target.kind == Target::Kind::Element) return named->at;
  // The nearest to the right; what is within it starts where it does, or further on.
  const Rectangle label = named->at;
  const double middle = label.y + label.height / 2;
  std::optional<Rectangle> nearest;
  for (const auto& [text, at] : all) {
    const bool isInRow = at.y <= middle && middle < at.y + at.height;
    if (!isInRow || at.x < label.x + label.width) continue;
    const bool isAsNear = nearest && at.x == nearest->x;
    if (!nearest || at.x < nearest->x || (isAsNear && at.width > nearest->width)) nearest = at;
  }
  return nearest;
}

// Each lies in the topmost window that has room for it.
std::vector<Hand::Element> Hand::elements() const {
  const auto shown = displays_.front()->windows();
  std::vector<Element> all;
  for (const auto& element : scout_.command("ai_findelements")) {
    if (!element.contains("rectangle") || element["isVisibleInViewHierarchy"] != "true") continue;
    const auto value = [&element](const char* key) {
      return std::stod(element["rectangle"][key].get<std::string>());
    };
    Rectangle at = {value("x"), value("y"), value("width"), value("height")};
    const auto window = std::find_if(shown.rbegin(), shown.rend(), [&at](const Rectangle& of) {
      return at.x + at.width <= of.width && at.y + at.height <= of.height;
    });
    if (window == shown.rend()) continue;
    at.x += window->x;
    at.y += window->y;
    all.push_back({element["text"], at});
  }
  return all;
}

}  // namespace tarni::test
