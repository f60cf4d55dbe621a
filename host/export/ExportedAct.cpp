#include "host/export/ExportedAct.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <string_view>

#include "host/player/Secrets.h"

namespace tarni::host {

namespace {

using Kind = ExportedAct::Kind;

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

constexpr double kFarthest = 1e6;  // beyond any screen

ExportedAct::Offset rounded(double x, double y) {
  const auto whole = [](double side) {
    return std::lround(std::clamp(side, -kFarthest, kFarthest));
  };
  return {whole(x), whole(y)};
}

std::optional<ExportedAct::Offset> fromMiddle(const Json& element, const Json& at) {
  if (at.empty() || isPressedAnywhere(element)) return std::nullopt;
  const Json& rect = objectIn(element, "rect");
  const auto along = [&](const char* axis, const char* side) {
    return numberIn(at, axis) - numberIn(rect, side) / 2;
  };
  const auto offset = rounded(along("x", "width"), along("y", "height"));
  return offset == ExportedAct::Offset() ? std::nullopt : std::optional(offset);
}

ExportedAct about(Kind kind, const Step& step) {
  const auto button = textIn(step.json(), "button");
  return {.kind = kind,
          .element = ExportedElement::fromElement(step.element()),
          .button = button.empty() ? "left" : button,
          .count = step.count(),
          .modifiers = keysOfChord(textIn(step.json(), "modifiers")),
          .at = fromMiddle(step.element(), objectIn(step.json(), "at"))};
}

ExportedAct aboutFocused(Kind kind, const Step& step) {
  ExportedAct act{.kind = kind};
  if (isToBeTold(step.element())) act.element = ExportedElement::fromElement(step.element());
  return act;
}

ExportedAct longPress(const Step& step) {
  auto act = about(Kind::LongPress, step);
  act.seconds =
      std::max(kLongPressSeconds, std::round(numberIn(step.json(), "durationMs") / 100) / 10);
  return act;
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

ExportedAct drag(const Step& step) {
  auto act = about(Kind::Drag, step);
  const Json& target = objectIn(step.json(), "target");
  if (!target.empty()) {
    act.target = ExportedElement::fromElement(target);
    act.targetAt = fromMiddle(target, objectIn(step.json(), "targetAt"));
    return act;
  }
  const Json& way = step.json()["way"];
  if (way.empty()) return act;
  ExportedAct::Offset before;
  for (const Json& point : isStraight(way) ? Json::array({way.back()}) : way) {
    const auto here = rounded(numberIn(point, "x"), numberIn(point, "y"));
    act.way.push_back({here.x - before.x, here.y - before.y});
    before = here;
  }
  return act;
}

ExportedAct wheel(const Step& step) {
  auto act = about(Kind::Wheel, step);
  act.offset = rounded(numberIn(step.json(), "right") * kPointsANotch,
                       numberIn(step.json(), "down") * kPointsANotch);
  return act;
}

ExportedAct press(const Step& step) {
  auto act = aboutFocused(Kind::Press, step);
  act.count = step.count();
  act.modifiers = keysOfChord(textIn(step.json(), "key"));
  if (act.modifiers.empty()) return act;
  act.text = act.modifiers.back();
  act.modifiers.pop_back();
  return act;
}

ExportedAct type(const Step& step) {
  auto act = aboutFocused(Kind::Type, step);
  act.text = textIn(step.json(), "text");
  if (!step.secret().empty()) act.secret = Secrets::variableOf(step.secret());
  return act;
}

ExportedAct setTo(Kind kind, const Step& step, const char* member) {
  auto act = about(kind, step);
  act.isOn = step.json().value(member, false);
  act.text = textIn(step.json(), "value");
  return act;
}

std::vector<ExportedAct> menu(const Step& step) {
  std::vector<ExportedAct> acts;
  for (const Json& entry : step.json()["path"]) {
    acts.push_back({.kind = Kind::Click, .element = ExportedElement::fromElement(entry)});
  }
  return acts;
}

ExportedAct resize(const Step& step) {
  ExportedAct act{.kind = Kind::Resize};
  act.offset = rounded(numberIn(step.json(), "width"), numberIn(step.json(), "height"));
  return act;
}

std::vector<ExportedAct> checks(const Step& step) {
  struct Check {
    const char* member;
    Kind kind;
  };
  constexpr std::array kChecks{Check{"is", Kind::CheckState}, Check{"textIs", Kind::CheckText},
                               Check{"textContains", Kind::CheckPartOfText}};
  std::vector<ExportedAct> acts;
  for (const auto& [member, kind] : kChecks) {
    if (!step.json().contains(member)) continue;
    acts.push_back(about(kind, step));
    acts.back().text = textIn(step.json(), member);
  }
  return acts;
}

}  // namespace

std::vector<ExportedAct> exportedActs(const Step& step) {
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
