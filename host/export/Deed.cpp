#include "host/export/Deed.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <string_view>

#include "host/player/Secrets.h"

namespace tarni::host {

namespace {

using Kind = Deed::Kind;

constexpr double kLongPressSeconds = 1;
constexpr long kStraight = 10;  // points beside the line that a hand does not mean

// An element that does the same wherever it is pressed.
bool isPressedAnywhere(const Json& element) {
  constexpr std::array<const char*, 3> kKinds{"UIControl", "UITableViewCell", "UILabel"};
  const auto kinds = element.find("kinds");
  if (kinds == element.end() || !kinds->is_array()) return false;
  return std::ranges::any_of(kKinds, [&](const char* kind) {
    return std::ranges::find(*kinds, Json(kind)) != kinds->end();
  });
}

Deed::Offset rounded(double x, double y) {
  return {std::lround(x), std::lround(y)};
}

std::optional<Deed::Offset> fromMiddle(const Json& element, const Json& at) {
  if (at.empty() || isPressedAnywhere(element)) return std::nullopt;
  const Json& rect = objectIn(element, "rect");
  const auto along = [&](const char* axis, const char* side) {
    return numberIn(at, axis) - numberIn(rect, side) / 2;
  };
  const auto offset = rounded(along("x", "width"), along("y", "height"));
  return offset == Deed::Offset() ? std::nullopt : std::optional(offset);
}

Deed about(Kind kind, const Step& step) {
  const auto button = textIn(step.json(), "button");
  return {.kind = kind,
          .element = ExportedElement::fromElement(step.element()),
          .button = button.empty() ? "left" : button,
          .count = step.count(),
          .modifiers = keysOfChord(textIn(step.json(), "modifiers")),
          .at = fromMiddle(step.element(), objectIn(step.json(), "at"))};
}

Deed aboutFocused(Kind kind, const Step& step) {
  Deed deed{.kind = kind};
  if (isToBeTold(step.element())) deed.element = ExportedElement::fromElement(step.element());
  return deed;
}

Deed longPress(const Step& step) {
  auto deed = about(Kind::LongPress, step);
  deed.seconds =
      std::max(kLongPressSeconds, std::round(numberIn(step.json(), "durationMs") / 100) / 10);
  return deed;
}

bool isStraight(const Json& way) {
  const double x = numberIn(way.back(), "x");
  const double y = numberIn(way.back(), "y");
  const double length = std::max(std::hypot(x, y), 1.0);
  return std::ranges::all_of(way, [&](const Json& point) {
    const double beside = numberIn(point, "x") * y - numberIn(point, "y") * x;
    return std::abs(beside) / length <= kStraight;
  });
}

Deed drag(const Step& step) {
  auto deed = about(Kind::Drag, step);
  const Json& target = objectIn(step.json(), "target");
  if (!target.empty()) {
    deed.target = ExportedElement::fromElement(target);
    deed.targetAt = fromMiddle(target, objectIn(step.json(), "targetAt"));
    return deed;
  }
  const Json& way = step.json()["way"];
  if (way.empty()) return deed;
  Deed::Offset before;
  for (const Json& point : isStraight(way) ? Json::array({way.back()}) : way) {
    const auto here = rounded(numberIn(point, "x"), numberIn(point, "y"));
    deed.way.push_back({here.x - before.x, here.y - before.y});
    before = here;
  }
  return deed;
}

Deed wheel(const Step& step) {
  auto deed = about(Kind::Wheel, step);
  deed.offset = rounded(numberIn(step.json(), "right") * kPointsANotch,
                        numberIn(step.json(), "down") * kPointsANotch);
  return deed;
}

Deed press(const Step& step) {
  auto deed = aboutFocused(Kind::Press, step);
  deed.count = step.count();
  deed.modifiers = keysOfChord(textIn(step.json(), "key"));
  if (deed.modifiers.empty()) return deed;
  deed.text = deed.modifiers.back();
  deed.modifiers.pop_back();
  return deed;
}

Deed type(const Step& step) {
  auto deed = aboutFocused(Kind::Type, step);
  deed.text = textIn(step.json(), "text");
  if (!step.secret().empty()) deed.secret = Secrets::variableOf(step.secret());
  return deed;
}

Deed setTo(Kind kind, const Step& step, const char* member) {
  auto deed = about(kind, step);
  deed.isOn = step.json().value(member, false);
  deed.text = textIn(step.json(), "value");
  return deed;
}

std::vector<Deed> menu(const Step& step) {
  std::vector<Deed> deeds;
  for (const Json& entry : step.json()["path"]) {
    deeds.push_back({.kind = Kind::Click, .element = ExportedElement::fromElement(entry)});
  }
  return deeds;
}

Deed resize(const Step& step) {
  Deed deed{.kind = Kind::Resize};
  deed.offset = rounded(numberIn(step.json(), "width"), numberIn(step.json(), "height"));
  return deed;
}

std::vector<Deed> checks(const Step& step) {
  struct Check {
    const char* member;
    Kind kind;
  };
  constexpr std::array kChecks{Check{"is", Kind::CheckState}, Check{"textIs", Kind::CheckText},
                               Check{"textContains", Kind::CheckPartOfText}};
  std::vector<Deed> deeds;
  for (const auto& [member, kind] : kChecks) {
    if (!step.json().contains(member)) continue;
    deeds.push_back(about(kind, step));
    deeds.back().text = textIn(step.json(), member);
  }
  return deeds;
}

}  // namespace

std::vector<Deed> deedsOf(const Step& step) {
  const auto act = step.act();
  if (act == "menu") return menu(step);
  if (act == Step::kCheck) return checks(step);
  if (act == "longPress") return {longPress(step)};
  if (act == "drag") return {drag(step)};
  if (act == "wheel") return {wheel(step)};
  if (act == "hover") return {about(Kind::Hover, step)};
  if (act == "key") return {press(step)};
  if (act == "type") return {type(step)};
  if (act == "choose") return {setTo(Kind::Choose, step, "")};
  if (act == "switch") return {setTo(Kind::Switch, step, "checked")};
  if (act == "expand") return {setTo(Kind::Expand, step, "expanded")};
  if (act == "resize") return {resize(step)};
  if (act == "close") return {about(Kind::Close, step)};
  return {about(Kind::Click, step)};
}

}  // namespace tarni::host
