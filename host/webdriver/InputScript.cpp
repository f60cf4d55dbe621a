#include "host/webdriver/InputScript.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "host/webdriver/Error.h"
#include "host/webdriver/Page.h"

namespace tarni::host::webdriver {

namespace {

constexpr const char* kPointer = "input.pointer";
constexpr const char* kKeys = "input.keys";
constexpr const char* kWheel = "input.wheel";
constexpr std::chrono::milliseconds kBetweenMoves{16};
constexpr std::size_t kMostSteps = 5'000;  // of one request

void note(std::set<std::string>& held, const std::string& name, bool isDown) {
  if (isDown) {
    held.insert(name);
  } else {
    held.erase(name);
  }
}

}  // namespace

InputScript::InputScript(Session& session)
    : session_(session), screen_(session), pointer_(session.pointer) {}

InputScript::Point InputScript::pointAt(double x, double y, const Json& origin) {
  if (origin == "pointer") return {pointer_.x + x, pointer_.y + y};
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

void InputScript::moveTo(Point point, milliseconds duration) {
  const auto count = std::clamp<long>(duration / kBetweenMoves, 1, 1'000);
  const Point from = pointer_;
  for (long move = 1; move <= count; ++move) {
    const double part = static_cast<double>(move) / static_cast<double>(count);
    if (duration.count() > 0) pause(duration / count);
    const Point at{from.x + (point.x - from.x) * part, from.y + (point.y - from.y) * part};
    const bool isLast = move == count;
    // Only where it ends it must be in a window.
    try {
      step(kPointer, {{"move", screen_.targetAt(isLast ? point : at)}});
    } catch (const Error&) {
      if (isLast) throw;
    }
  }
  pointer_ = point;
}

void InputScript::button(const std::string& name, bool isDown) {
  step(kPointer, {{isDown ? "down" : "up", name}});
  note(session_.held.buttons, name, isDown);
}

void InputScript::key(const std::string& name, bool isDown) {
  step(kKeys, {{isDown ? "down" : "up", name}});
  note(session_.held.keys, name, isDown);
}

void InputScript::wheel(Point at, double right, double down) {
  requests_.push_back(
      {kWheel, {{"at", screen_.targetAt(at)}, {"right", right}, {"down", down}}, {}});
}

void InputScript::pause(milliseconds duration) {
  if (duration.count() == 0) return;
  const bool fits = !requests_.empty() && requests_.back().method != kWheel;
  const auto method = fits ? requests_.back().method : kPointer;
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
  try {
    for (auto& [method, parameters, duration] : requests_) {
      session_.call(method, std::move(parameters), duration + SessionClient::kUsualTimeout);
    }
    session_.pointer = pointer_;
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
}

}  // namespace tarni::host::webdriver
