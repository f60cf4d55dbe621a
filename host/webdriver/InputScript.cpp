#include "host/webdriver/InputScript.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "host/session/Step.h"
#include "host/webdriver/Error.h"
#include "host/webdriver/Page.h"

namespace tarni::host::webdriver {

namespace {

constexpr const char* kPointer = "input.pointer";
constexpr const char* kTouch = "input.touch";
constexpr const char* kKeys = "input.keys";
constexpr const char* kWheel = "input.wheel";
constexpr std::chrono::milliseconds kBetweenMoves{16};
constexpr std::chrono::milliseconds kPush{200};
constexpr std::size_t kMostSteps = 5'000;  // of one request

void note(std::set<std::string>& held, const std::string& name, bool isDown) {
  if (isDown) {
    held.insert(name);
  } else {
    held.erase(name);
  }
}

// How much of its way a move has behind it.
double partAt(InputScript::milliseconds duration, InputScript::milliseconds lasts, long turn,
              long count) {
  if (duration.count() == 0) return 1;
  const double elapsed = static_cast<double>(lasts.count() * turn) / static_cast<double>(count);
  return std::min(elapsed / static_cast<double>(duration.count()), 1.0);
}

}  // namespace

InputScript::InputScript(Session& session)
    : session_(session), screen_(session), pointers_(session.pointers) {}

Session::Pointer& InputScript::pointerNamed(const std::string& name) {
  const auto [found, isNew] = pointers_.try_emplace(name);
  const bool isMouse = name.empty() && session_.hasInput();
  if (isNew && !isMouse) found->second.finger = static_cast<long>(pointers_.size());
  return found->second;
}

InputScript::Point InputScript::pointAt(const std::string& pointer, double x, double y,
                                        const Json& origin) {
  if (origin == "pointer") {
    const Point at = pointerNamed(pointer).at;
    return {at.x + x, at.y + y};
  }
  if (session_.page && origin.is_object()) {
    const Json place =
        askPage(session_, "viewportRect", {{"element", textIn(origin, kElementKey)}});
    return {place.value("x", 0.0) + place.value("width", 0.0) / 2 + x,
            place.value("y", 0.0) + place.value("height", 0.0) / 2 + y};
  }
  const auto element = referred(origin);
  if (!element) {
    if (origin.is_object()) throw Error("invalid argument", "\"origin\" is no element");
    return {x, y};
  }
  const auto place = screen_.placeOf(session_.described(*element));
  return {place.x + place.width / 2 + x, place.y + place.height / 2 + y};
}

void InputScript::move(const std::vector<Move>& moves) {
  milliseconds lasts{0};
  for (const auto& move : moves) lasts = std::max(lasts, move.duration);
  std::vector<Point> from;
  for (const auto& move : moves) from.push_back(pointerNamed(move.pointer).at);
  const auto count = std::clamp<long>(lasts / kBetweenMoves, 1, 1'000);
  for (long turn = 1; turn <= count; ++turn) {
    pause(lasts / count);
    Places places;
    for (std::size_t i = 0; i < moves.size(); ++i) {
      const double part = partAt(moves[i].duration, lasts, turn, count);
      const Point to = moves[i].to;
      places[moves[i].pointer] = {from[i].x + (to.x - from[i].x) * part,
                                  from[i].y + (to.y - from[i].y) * part};
    }
    // Only where it ends it must be in a window.
    put(places, turn == count);
  }
}

void InputScript::put(const Places& places, bool mustHit) {
  Json fingers = Json::array();
  for (const auto& [name, place] : places) {
    auto& pointer = pointerNamed(name);
    pointer.at = place;
    try {
      auto target = screen_.targetAt(place);
      if (pointer.finger == 0) {
        step(kPointer, {{"move", std::move(target)}});
      } else if (pointer.isDown) {
        target["finger"] = pointer.finger;
        fingers.push_back(std::move(target));
      }
    } catch (const Error&) {
      if (mustHit) throw;
    }
  }
  if (!fingers.empty()) step(kTouch, {{"move", std::move(fingers)}});
}

void InputScript::button(const std::string& pointer, const std::string& name, bool isDown) {
  auto& own = pointerNamed(pointer);
  const char* const change = isDown ? "down" : "up";
  if (own.finger == 0) {
    step(kPointer, {{change, name}});
    return note(session_.held.buttons, name, isDown);
  }
  auto finger = isDown ? screen_.targetAt(own.at) : Json::object();
  finger["finger"] = own.finger;
  step(kTouch, {{change, std::move(finger)}});
  own.isDown = isDown;
}

void InputScript::click(Point at, milliseconds duration) {
  drag(at, at, duration, milliseconds(0));
}

void InputScript::drag(Point from, Point to, milliseconds hold, milliseconds duration) {
  constexpr const char* kUsual = "";
  move({{kUsual, from}});
  button(kUsual, "left", true);
  pause(hold);
  if (to.x != from.x || to.y != from.y) move({{kUsual, to, duration}});
  button(kUsual, "left", false);
}

void InputScript::key(const std::string& name, bool isDown) {
  step(kKeys, {{isDown ? "down" : "up", name}});
  note(session_.held.keys, name, isDown);
}

void InputScript::wheel(Point at, double right, double down) {
  if (session_.hasInput()) {
    requests_.push_back(
        {kWheel, {{"at", screen_.targetAt(at)}, {"right", right}, {"down", down}}, {}});
    return;
  }
  const auto window = rectangleIn(screen_.current(), "rect");
  const Point to{std::clamp(at.x - right * kPointsANotch, 0.0, window.width - 1),
                 std::clamp(at.y - down * kPointsANotch, 0.0, window.height - 1)};
  drag(at, to, milliseconds(0), kPush);
}

void InputScript::pause(milliseconds duration) {
  if (duration.count() == 0) return;
  const bool fits = !requests_.empty() && requests_.back().method != kWheel;
  const auto method = fits ? requests_.back().method : session_.hasInput() ? kPointer : kTouch;
  step(method.c_str(), {{"pause", duration.count()}});
  requests_.back().duration += duration;
}

void InputScript::step(const char* method, Json step) {
  const bool goesOn = !requests_.empty() && requests_.back().method == method &&
                      requests_.back().parameters["steps"].size() < kMostSteps;
  if (!goesOn) requests_.push_back({method, {{"steps", Json::array()}}, {}});
  requests_.back().parameters["steps"].push_back(std::move(step));
}

void InputScript::play() {
  session_.pointers = pointers_;
  try {
    for (auto& [method, parameters, duration] : requests_) {
      session_.call(method, std::move(parameters), duration + SessionClient::kUsualTimeout);
    }
  } catch (const Error&) {
    releaseInput(session_);
    throw;
  }
}

void releaseInput(Session& session) {
  const auto release = [&session](const char* method, const std::set<std::string>& names) {
    if (names.empty()) return;
    Json steps = Json::array();
    for (const auto& name : names) steps.push_back({{"up", name}});
    session.call(method, {{"steps", steps}});
  };
  const auto held = std::exchange(session.held, {});
  release(kPointer, held.buttons);
  release(kKeys, held.keys);
  Json fingers = Json::array();
  for (auto& [name, pointer] : session.pointers) {
    if (pointer.finger != 0) fingers.push_back({{"finger", pointer.finger}});
    pointer.isDown = false;
  }
  if (!fingers.empty()) {
    session.call(kTouch, {{"steps", Json::array({{{"up", std::move(fingers)}}})}});
  }
}

}  // namespace tarni::host::webdriver
