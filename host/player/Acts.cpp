#include "host/player/Acts.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/guard/Printable.h"
#include "host/guard/Text.h"

namespace tarni::host {

namespace {

constexpr int kLongPressMs = 1'000;
constexpr std::size_t kMostKeysOfRequest = 5'000;

std::string buttonOf(const Step& step) {
  const auto button = textIn(step.json(), "button");
  return button.empty() ? "left" : button;
}

Json ownTarget(const Acting& acting, const FoundElement& found) {
  const Step& step = acting.step();
  return Acting::target(found, step.element(), objectIn(step.json(), "at"));
}

// Holds the modifiers of the step while `what` is done.
template <typename What>
void withModifiers(Acting& acting, const What& what) {
  const auto keys = keysOfChord(textIn(acting.step().json(), "modifiers"));
  const auto turn = [&](const char* direction) {
    Json steps = Json::array();
    for (const auto& key : keys) steps.push_back({{direction, key}});
    if (!keys.empty()) acting.act("input.keys", {{"steps", std::move(steps)}});
  };
  turn("down");
  what();
  turn("up");
}

// --- the pointer

// `element.click` has a page do it, and refuses what is disabled.
bool takesPointerAlone(const FoundElement& found) {
  return found.isInPage() || !found.description.value("enabled", true);
}

void clickByPointer(Acting& acting, const Json& target) {
  const auto button = buttonOf(acting.step());
  Json steps = {{{"move", target}}};
  for (int turn = 0; turn < std::min(acting.step().count(), 3); ++turn) {
    steps.push_back({{"down", button}});
    steps.push_back({{"up", button}});
  }
  withModifiers(acting, [&] { acting.act("input.pointer", {{"steps", steps}}); });
}

void click(Acting& acting) {
  const Step& step = acting.step();
  const auto found = acting.element();
  Json parameters = ownTarget(acting, found);
  if (takesPointerAlone(found)) return clickByPointer(acting, parameters);
  parameters["button"] = buttonOf(step);
  parameters["count"] = std::min(step.count(), 3);
  const auto modifiers = textIn(step.json(), "modifiers");
  if (!modifiers.empty()) parameters["modifiers"] = modifiers;
  acting.act("element.click", std::move(parameters));
}

void longPress(Acting& acting) {
  const auto found = acting.element();
  const auto button = buttonOf(acting.step());
  const auto lasted = numberIn(acting.step().json(), "durationMs");
  const Json steps = {{{"move", ownTarget(acting, found)}},
                      {{"down", button}},
                      {{"pause", std::clamp<double>(lasted, kLongPressMs, 10 * kLongPressMs)}},
                      {{"up", button}}};
  withModifiers(acting, [&] { acting.act("input.pointer", {{"steps", steps}}); });
}

// Another point of the window, from a target in an element of it. What is dragged moves with the
// pointer, so that it tells no place on the way.
Json along(const FoundElement& found, const Json& target, const Json& way) {
  const Json& rect = objectIn(found.description, "rect");
  const auto at = [&](const char* axis, const char* side) {
    const double inside = target.value(axis, numberIn(rect, side) / 2);
    return numberIn(rect, axis) + inside + numberIn(way, axis);
  };
  const Json window = found.isInPage() ? found.description["page"] : Json(found.handle());
  return {{"window", window}, {"x", at("x", "width")}, {"y", at("y", "height")}};
}

// From where it began along its way; what it ended over may stand elsewhere now.
void drag(Acting& acting) {
  const Json& step = acting.step().json();
  const auto found = acting.element();
  const Json from = ownTarget(acting, found);
  const auto button = buttonOf(acting.step());
  Json steps = {{{"move", along(found, from, Json::object())}}, {{"down", button}}};
  for (const Json& point : step["way"]) steps.push_back({{"move", along(found, from, point)}});
  const Json& target = objectIn(step, "target");
  if (!target.empty()) {
    const Json to = Acting::target(acting.other("/target"), target, objectIn(step, "targetAt"));
    if (steps.size() > 2) steps.erase(steps.size() - 1);
    steps.push_back({{"move", to}});
  }
  steps.push_back({{"up", button}});
  withModifiers(acting, [&] { acting.act("input.pointer", {{"steps", std::move(steps)}}); });
}

void wheel(Acting& acting) {
  const Json& step = acting.step().json();
  const auto found = acting.element();
  withModifiers(acting, [&] {
    acting.act("input.wheel", {{"at", ownTarget(acting, found)},
                               {"right", numberIn(step, "right")},
                               {"down", numberIn(step, "down")}});
  });
}

void hover(Acting& acting) {
  const auto found = acting.element();
  const Json target = ownTarget(acting, found);
  // A menu opens an entry once the pointer moves in it, not for the pointer that comes.
  const Json beside = along(found, target, {{"x", -2.0}, {"y", 0.0}});
  acting.act("input.pointer", {{"steps", {{{"move", beside}}, {{"move", target}}}}});
}

// What opens a window meanwhile closes the menu, in a program that has only just started, say: it
// is opened once more.
void menu(Acting& acting) {
  const Json& path = acting.step().json()["path"];
  for (std::size_t pressed = 0; pressed < path.size();) {
    const auto there = "/path/" + std::to_string(pressed);
    const auto found = pressed == 0 ? std::optional(acting.other(there)) : acting.otherSoon(there);
    if (found && !found->description.value("enabled", true) &&
        !path[pressed].value("enabled", true)) {
      clickByPointer(acting, {{"element", found->handle()}});
    } else if (found) {
      acting.act("element.click", {{"element", found->handle()}});
    }
    pressed = found ? pressed + 1 : 0;
  }
}

// --- the keyboard

// Keys go to what has the focus; it is given to the element only if it does not have it, as that
// may mark its text. A page does not know whether it has the focus itself.
Json focusedOn(const std::optional<FoundElement>& found, Json parameters) {
  const bool isFocused =
      !found || (found->description.value("focused", false) && !found->isInPage());
  if (!isFocused) parameters["element"] = found->handle();
  return parameters;
}

void key(Acting& acting) {
  const auto found = acting.elementIfAny();
  Json steps = Json::array();
  for (int turn = 0; turn < acting.step().count(); ++turn) {
    steps.push_back(textIn(acting.step().json(), "key"));
  }
  acting.act("input.keys", focusedOn(found, {{"steps", std::move(steps)}}));
}

std::vector<std::string> keysOfText(const std::string& text) {
  auto keys = charactersOf(text);
  std::ranges::replace(keys, "\n", "Enter");
  std::ranges::replace(keys, "\t", "Tab");
  return keys;
}

// Whether the element comes to be so; one that is gone has done what it is there for.
bool comesToBe(Acting& acting, const FoundElement& found, Json condition) {
  condition["element"] = found.handle();
  try {
    return acting.comesTrue(condition);
  } catch (const RequestError&) {
    acting.note("gone since");
    return true;
  }
}

// A field with a mask or a completion of its own may hold something else than what was typed; one
// that holds what it held has taken nothing. A page handles keys after they are answered for, and
// shows dots in place of a secret.
void requireTaken(Acting& acting, const FoundElement& found) {
  const auto wanted = valueIn(acting.step().json(), "value");
  if (found.isInPage() && found.description.value("editable", false)) {
    const auto shown = acting.step().secret().empty() ? acting.textToType() : std::string("•");
    const Json taken = wanted ? Json{{"textIs", *wanted}} : Json{{"textContains", shown}};
    if (comesToBe(acting, found, taken)) return;
  }
  const auto now = acting.describedNow(found.handle());
  const auto text = now ? valueIn(*now, "text") : std::nullopt;
  if (!text || !found.description.contains("text")) return;
  if (wanted && text == wanted) return;
  const bool isUnchanged = text == valueIn(found.description, "text");
  if (isUnchanged && found.description.value("editable", false)) {
    throw StepFailure("it took no text: it still holds " + inQuotes(*text));
  }
  if (wanted) acting.note("it holds " + inQuotes(*text) + ", not " + inQuotes(*wanted));
}

void type(Acting& acting) {
  const auto found = acting.elementIfAny();
  const auto keys = keysOfText(acting.textToType());
  for (std::size_t done = 0; done < keys.size(); done += kMostKeysOfRequest) {
    const auto count = std::min(kMostKeysOfRequest, keys.size() - done);
    const auto begin = keys.begin() + static_cast<std::ptrdiff_t>(done);
    const Json part = std::vector<std::string>(begin, begin + static_cast<std::ptrdiff_t>(count));
    acting.act("input.keys", focusedOn(done == 0 ? found : std::nullopt, {{"steps", part}}));
  }
  if (found && !keys.empty()) requireTaken(acting, *found);
}

// --- controls

// Throws unless the element comes to be so.
void require(Acting& acting, const FoundElement& found, Json condition, const char* member) {
  if (comesToBe(acting, found, std::move(condition))) return;
  const auto now = acting.describedNow(found.handle());
  const auto value = now ? valueIn(*now, member) : std::nullopt;
  throw StepFailure("done, but its " + std::string(member) + " is " +
                    inQuotes(value.value_or("unknown")));
}

// The place of a choice stands in for its text once that has had its time to come. Answers what was
// chosen.
std::string chosen(Acting& acting, Json parameters) {
  const auto value = textIn(parameters, "value");
  const bool hasPlace = parameters.contains("choice");
  if (hasPlace && acting.actOnceTaken("element.setValue", parameters)) return value;
  if (hasPlace) parameters["orInPlace"] = true;
  const auto taken = textIn(acting.act("element.setValue", std::move(parameters)), "taken");
  if (taken.empty()) return value;
  acting.note("no choice is called " + inQuotes(value) + ": took the one in its place");
  acting.propose("/value", taken, inQuotes(taken));
  return taken;
}

void choose(Acting& acting) {
  const Json& step = acting.step().json();
  const auto found = acting.element();
  Json parameters = {{"element", found.handle()}, {"value", textIn(step, "value")}};
  if (step.contains("choice")) parameters["choice"] = step["choice"];
  const auto value = chosen(acting, std::move(parameters));
  if (found.description.contains("text")) require(acting, found, {{"textIs", value}}, "text");
}

void setSwitch(Acting& acting) {
  const bool wanted = acting.step().json()["checked"];
  const auto found = acting.element();
  const auto now = found.description.find("checked");
  if (now != found.description.end() && *now == wanted) {
    return acting.note(wanted ? "was on already" : "was off already");
  }
  acting.act("element.click", ownTarget(acting, found));
  require(acting, found, {{"is", wanted ? "checked" : "unchecked"}}, "checked");
}

void expand(Acting& acting) {
  const bool wanted = acting.step().json()["expanded"];
  const auto found = acting.element();
  const auto now = found.description.find("expanded");
  const bool isKnown = now != found.description.end();
  if (isKnown && *now == wanted) {
    return acting.note(wanted ? "was open already" : "was closed already");
  }
  const bool isRow = isKnown && found.description.contains("row");
  if (isRow) {
    acting.act("element.setExpanded", {{"element", found.handle()}, {"expanded", wanted}});
  } else {
    // The arrow beside it.
    acting.act("element.click", ownTarget(acting, found));
  }
}

// --- windows

void resize(Acting& acting) {
  const Json& step = acting.step().json();
  Json parameters = {{"width", numberIn(step, "width")}, {"height", numberIn(step, "height")}};
  const bool isNamed = !locatorsIn(acting.step().element()).empty();
  if (isNamed) parameters["window"] = acting.elementAsItIs().handle();
  acting.act("window.resize", std::move(parameters));
}

void close(Acting& acting) {
  acting.act("window.close", {{"window", acting.elementAsItIs().handle()}});
}

// --- checks

std::string whatIsThere(const Json& now) {
  return "it shows " + inQuotes(textIn(now, "text")) +
         (now.contains("checked") ? now["checked"] == true ? ", checked" : ", unchecked" : "");
}

void check(Acting& acting) {
  const Json& step = acting.step().json();
  const auto is = textIn(step, "is");
  if (is == "gone") {
    const auto ways = locatorsIn(acting.step().element());
    if (ways.empty() || acting.comesTrueInTime({{"find", ways.front()}, {"is", is}})) return;
    throw StepFailure("it is still there");
  }
  const auto found = acting.elementAsItIs();
  Json condition = {{"element", found.handle()}};
  for (const char* const member : {"is", "textIs", "textContains"}) {
    if (step.contains(member)) condition[member] = step[member];
  }
  const auto begin = Clock::now();
  if (acting.comesTrueInTime(condition)) return acting.noteWait(begin, "until it held");
  throw StepFailure("the check does not hold: " +
                    whatIsThere(acting.describedNow(found.handle()).value_or(Json::object())));
}

struct ActKind {
  std::string_view name;
  void (*carryOut)(Acting& acting);
};
constexpr std::array kActs{
    ActKind{"click", click},   ActKind{"longPress", longPress}, ActKind{"drag", drag},
    ActKind{"wheel", wheel},   ActKind{"hover", hover},         ActKind{"key", key},
    ActKind{"type", type},     ActKind{"choose", choose},       ActKind{"switch", setSwitch},
    ActKind{"expand", expand}, ActKind{"menu", menu},           ActKind{"resize", resize},
    ActKind{"close", close},   ActKind{Step::kCheck, check},
};

}  // namespace

void carryOut(Acting& acting) {
  const auto* const kind = std::ranges::find(kActs, acting.step().act(), &ActKind::name);
  if (kind == kActs.end()) throw StepFailure("the act is not known");
  kind->carryOut(acting);
}

}  // namespace tarni::host
