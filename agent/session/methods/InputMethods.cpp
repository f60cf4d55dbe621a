#include <algorithm>
#include <array>
#include <cmath>

#include "agent/session/input/Acting.h"
#include "agent/session/input/HeldInput.h"
#include "agent/session/input/Keys.h"
#include "agent/session/methods/Handlers.h"
#include "agent/session/protocol/Names.h"
#include "agent/session/screen/Elements.h"
#include "agent/session/screen/Pages.h"
#include "platform/Platform.h"

namespace tarni::session::input {

using platform::CGPoint;
using platform::Task;
using platform::UIViewRef;
using platform::UIWindowRef;

namespace {

constexpr std::size_t kMostSteps = 10'000;
constexpr std::array<std::string_view, 5> kTargetMembers{"element", "window", "x", "y", "finger"};

[[noreturn]] void refuse(const std::string& why) {
  throw SessionError(errors::kInvalidArgument, why);
}

template <typename Value>
Value member(const Json& object, const char* name, Value usual) {
  if (!object.is_object()) refuse("a target is an object like {\"element\": 12}");
  try {
    return object.value(name, usual);
  } catch (const Json::exception&) {
    refuse("\"" + std::string(name) + "\" has the wrong type");
  }
}

// A number of another kind may be larger than any handle.
Handle handleIn(const Json& target, const char* name) {
  if (!target[name].is_number_integer()) refuse("\"" + std::string(name) + "\" has the wrong type");
  return target[name].get<Handle>();
}

using Spot = Fingers::Spot;

// Of a page's element, in its window's coordinates.
Task<platform::CGRect> rectIn(PageElement element) {
  const Json description = Json::parse(co_await descriptionOf(element));
  const Json& rect = description["rect"];
  co_return platform::CGRect{{rect.value("x", 0.0), rect.value("y", 0.0)},
                             {rect.value("width", 0.0), rect.value("height", 0.0)}};
}

// {element, x, y}: from the element's upper left corner, its middle without them; {window, x, y}
// and {x, y}: of that window, of the key window.
Task<Spot> spotOf(const Json& target) {
  const double none = std::nan("");
  CGPoint point{member(target, "x", none), member(target, "y", none)};
  requireKnownMembers("a target", target, kTargetMembers);
  if (target.contains("element")) {
    const Handle handle = handleIn(target, "element");
    if (const PageElement* const element = Elements::sharedInstance().pageElementOf(handle)) {
      const UIViewRef page = element->webView.lock();
      const platform::CGRect rect = co_await rectIn(*element);
      if (std::isnan(point.x)) point.x = rect.size.width / 2;
      if (std::isnan(point.y)) point.y = rect.size.height / 2;
      co_return Spot{page->window(), {rect.minX() + point.x, rect.minY() + point.y}};
    }
    const auto view = Elements::sharedInstance().viewOf(handle);
    const platform::CGRect bounds = view->bounds();
    if (std::isnan(point.x)) point.x = bounds.size.width / 2;
    if (std::isnan(point.y)) point.y = bounds.size.height / 2;
    point = {bounds.minX() + point.x, bounds.minY() + point.y};
    co_return Spot{view->window(), view->convertPointToWindow(point)};
  }
  if (std::isnan(point.x) || std::isnan(point.y)) refuse("a target says an element, or x and y");
  if (target.contains("window")) {
    const auto view = Elements::sharedInstance().viewOf(handleIn(target, "window"));
    co_return Spot{view->window(), point};
  }
  UIWindowRef key = platform::current().application->keyWindow();
  if (!key) throw SessionError(errors::kNoSuchWindow, "the program shows no window");
  co_return Spot{std::move(key), point};
}

// Whoever is behind the client has it in hand.
platform::InputDevices& devicesOf(const CallRef& call) {
  HeldInput& held = *call->held();
  return call->parameters().value("person", false) ? held.personsDevices() : held.devices();
}

Task<void> moveTo(CallRef call, Json target) {
  const Spot spot = co_await spotOf(target);
  co_await devicesOf(call).movePointer(spot.window, spot.point);
}

const std::string& nameIn(const Json& value) {
  if (!value.is_string()) refuse("a button or a key is a text");
  return value.get_ref<const std::string&>();
}

double millisecondsIn(const Json& value) {
  if (!value.is_number() || value.get<double>() < 0) refuse("a pause is a number of milliseconds");
  return value.get<double>();
}

// The one member of a step, with what it says.
std::pair<std::string, Json> stepOf(const Json& step) {
  if (step.is_string()) return {"press", step};
  if (!step.is_object() || step.size() != 1) {
    refuse("a step is an object of one member, like {\"down\": \"left\"}");
  }
  return {step.begin().key(), step.begin().value()};
}

const Json& stepsIn(const CallRef& call) {
  const Json& steps = call->parameters()["steps"];
  if (steps.size() > kMostSteps) refuse("more than 10,000 steps");
  return steps;
}

Task<void> pointerStep(CallRef call, std::string name, Json value) {
  if (name == "move") {
    co_await moveTo(call, std::move(value));
  } else if (name == "down" || name == "up") {
    const platform::PointerButton button = buttonNamed(nameIn(value));
    co_await call->held()->setButton(button, name == "down", devicesOf(call));
  } else if (name == "pause") {
    co_await call->pause(millisecondsIn(value));
  } else {
    refuse("a step of the pointer is one of move, down, up and pause, not \"" + name + "\"");
  }
}

// A finger, or several in a list, each an object with its number.
std::vector<Json> fingersIn(const Json& value) {
  if (!value.is_array()) return {value};
  if (value.empty()) refuse("a list of fingers has at least one");
  return {value.begin(), value.end()};
}

long numberIn(const Json& finger) {
  const auto found = finger.is_object() ? finger.find("finger") : finger.end();
  if (found == finger.end() || !found->is_number_integer()) {
    refuse("a finger is an object with its number, like {\"finger\": 1}");
  }
  return found->get<long>();
}

Task<Fingers::Spots> spotsOf(const Json& value) {
  Fingers::Spots spots;
  const std::vector<Json> fingers = fingersIn(value);
  for (const Json& finger : fingers) {
    const Spot spot = co_await spotOf(finger);
    spots[numberIn(finger)] = spot;
  }
  co_return spots;
}

std::vector<long> numbersIn(const Json& value) {
  std::vector<long> numbers;
  for (const Json& finger : fingersIn(value)) numbers.push_back(numberIn(finger));
  return numbers;
}

Task<void> touchStep(CallRef call, std::string name, Json value) {
  Fingers& fingers = call->held()->fingers();
  if (name == "down") {
    Fingers::Spots spots = co_await spotsOf(value);
    co_await fingers.down(std::move(spots));
  } else if (name == "move") {
    Fingers::Spots spots = co_await spotsOf(value);
    co_await fingers.move(std::move(spots));
  } else if (name == "up") {
    std::vector<long> numbers = numbersIn(value);
    co_await fingers.up(std::move(numbers));
  } else if (name == "pause") {
    co_await call->pause(millisecondsIn(value));
  } else {
    refuse("a step of fingers is one of down, move, up and pause, not \"" + name + "\"");
  }
}

Task<void> keyStep(CallRef call, std::string name, Json value) {
  if (name == "press") {
    std::string chord = nameIn(value);
    co_await pressKeys(*call->held(), std::move(chord), devicesOf(call));
  } else if (name == "down" || name == "up") {
    std::string key = nameIn(value);
    co_await call->held()->setKey(std::move(key), name == "down", devicesOf(call));
  } else if (name == "pause") {
    co_await call->pause(millisecondsIn(value));
  } else {
    refuse("a step of the keyboard is one of press, down, up and pause, not \"" + name + "\"");
  }
}

using TakeStep = Task<void> (*)(CallRef call, std::string name, Json value);

Task<void> takeSteps(CallRef call, TakeStep take) {
  for (const Json& step : stepsIn(call)) {
    auto [name, value] = stepOf(step);
    const bool mayWrite = name != "move" && name != "pause";
    co_await take(call, std::move(name), std::move(value));
    if (mayWrite) call->ownActs().settle();
  }
}

// What is typed goes where the focus is.
Task<void> focusOn(const Json& parameters) {
  if (!parameters.contains("element")) co_return;
  co_await giveFocus(parameters["element"].get<Handle>());
}

}  // namespace

Answer pointer(CallRef call) {
  co_await takeSteps(call, pointerStep);
  co_return Result();
}

Answer touch(CallRef call) {
  co_await takeSteps(call, touchStep);
  co_return Result();
}

Answer keys(CallRef call) {
  co_await focusOn(call->parameters());
  co_await takeSteps(call, keyStep);
  co_return Result();
}

Answer wheel(CallRef call) {
  const Json& parameters = call->parameters();
  if (parameters.contains("at")) co_await moveTo(call, parameters["at"]);
  const double right = parameters.value("right", 0.0);
  const double down = parameters.value("down", 0.0);
  co_await devicesOf(call).turnWheel(right, down);
  co_return Result();
}

Answer text(CallRef call) {
  co_await focusOn(call->parameters());
  std::string text = call->parameters()["text"].get<std::string>();
  co_await devicesOf(call).commitText(std::move(text));
  co_return Result();
}

// In many small moves, since programs begin a drag only after some way.
Answer drag(CallRef call) {
  const Json& parameters = call->parameters();
  const platform::PointerButton button = buttonNamed(parameters.value("button", "left"));
  const long moves = std::clamp(parameters.value("moves", 12L), 2L, 1000L);
  const double duration = parameters.value("duration", 200.0);
  HeldInput& held = *call->held();
  platform::InputDevices& devices = devicesOf(call);
  const Spot from = co_await spotOf(parameters["from"]);
  co_await spotOf(parameters["to"]);
  co_await devices.movePointer(from.window, from.point);
  co_await held.setButton(button, true, devices);
  for (long move = 1; move <= moves; ++move) {
    co_await call->pause(duration / static_cast<double>(moves));
    // Where it is going may move meanwhile.
    const Spot to = co_await spotOf(parameters["to"]);
    const CGPoint end = platform::convertPoint(to.point, to.window, from.window);
    const double part = static_cast<double>(move) / static_cast<double>(moves);
    const bool isLast = move == moves;
    const UIWindowRef window = isLast ? to.window : from.window;
    const CGPoint point = isLast ? to.point
                                 : CGPoint{from.point.x + (end.x - from.point.x) * part,
                                           from.point.y + (end.y - from.point.y) * part};
    co_await devices.movePointer(window, point);
  }
  co_await held.setButton(button, false, devices);
  co_return Result();
}

}  // namespace tarni::session::input
