#include "host/webdriver/Gestures.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <string_view>

#include "host/webdriver/Error.h"
#include "host/webdriver/InputScript.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver::gestures {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLongPress{1'000};
constexpr milliseconds kDrag{500};
constexpr double kUsualPart = 0.8;  // of an element that a swipe goes over
constexpr double kUsualNotches = 5;
constexpr const char* kOneFinger = "one finger";
constexpr const char* kOtherFinger = "other finger";
constexpr double kTurnAtOnce = 0.1;  // of two fingers, in radians

Session::Handle elementIn(const Json& parameters, const char* name) {
  return elementOf(textIn(parameters, name));
}

bool namesElement(const Json& parameters, const char* name = "elementId") {
  return !textIn(parameters, name).empty();
}

double number(const Json& parameters, const char* name, double usual) {
  const auto found = parameters.find(name);
  if (found == parameters.end() || found->is_null()) return usual;
  if (found->is_number()) return found->get<double>();
  throw Error("invalid argument", "\"" + std::string(name) + "\" is a number");
}

// In seconds, or for the other dialect in milliseconds.
milliseconds lasting(const Json& parameters, milliseconds usual) {
  const double seconds = number(parameters, "duration", static_cast<double>(usual.count()) / 1000);
  constexpr double kCertainlyMilliseconds = 60;
  constexpr double kLongest = 600'000;
  const double asked = seconds > kCertainlyMilliseconds ? seconds : seconds * 1000;
  return milliseconds(static_cast<long>(std::clamp(asked, 0.0, kLongest)));
}

Rectangle rectangleOf(Session& session, const Json& parameters) {
  const Screen screen(session);
  if (namesElement(parameters)) {
    return screen.placeOf(session.described(elementIn(parameters, "elementId")));
  }
  const auto window = rectangleIn(screen.current(), "screenRect");
  return {number(parameters, "left", 0), number(parameters, "top", 0),
          number(parameters, "width", window.width), number(parameters, "height", window.height)};
}

Screen::Point middleOf(const Rectangle& place) {
  return {place.x + place.width / 2, place.y + place.height / 2};
}

// An offset counts from the element's corner; none is its middle.
Screen::Point pointOf(Session& session, const Json& parameters, const char* x = "x",
                      const char* y = "y") {
  if (!namesElement(parameters)) {
    if (!parameters.contains(x) || !parameters.contains(y)) {
      throw Error("invalid argument", "\"elementId\", or \"x\" and \"y\", is needed");
    }
    return {number(parameters, x, 0), number(parameters, y, 0)};
  }
  const auto place = rectangleOf(session, parameters);
  const double right = number(parameters, x, 0);
  const double down = number(parameters, y, 0);
  const bool isMiddle = right == 0 && down == 0;
  return {place.x + (isMiddle ? place.width / 2 : right),
          place.y + (isMiddle ? place.height / 2 : down)};
}

Json press(Session& session, const Json& parameters, int count, milliseconds duration) {
  InputScript script(session);
  const auto at = pointOf(session, parameters);
  for (int turn = 0; turn < count; ++turn) script.click(at, duration);
  script.play();
  return nullptr;
}

Json drag(Session& session, Screen::Point from, Screen::Point to, milliseconds hold,
          milliseconds duration) {
  InputScript script(session);
  script.drag(from, to, hold, duration);
  script.play();
  return nullptr;
}

struct Direction {
  std::string_view name;
  double right, down;
};
constexpr Direction kDirections[] = {
    {"up", 0, -1}, {"down", 0, 1}, {"left", -1, 0}, {"right", 1, 0}};

Direction directionIn(const Json& parameters) {
  const auto name = textIn(parameters, "direction");
  const auto* const found = std::ranges::find(kDirections, name, &Direction::name);
  if (found != std::end(kDirections)) return *found;
  throw Error("invalid argument", "\"direction\" is up, down, left or right");
}

// What two fingers do on both sides of a middle: how far they are from it, and how they turn.
struct Pair {
  Screen::Point middle;
  double reach;  // in points
  double angle;  // in radians, clockwise
};

void place(InputScript& script, const Pair& pair, milliseconds duration) {
  const double right = pair.reach * std::cos(pair.angle);
  const double down = pair.reach * std::sin(pair.angle);
  script.move({{kOneFinger, {pair.middle.x - right, pair.middle.y - down}, duration},
               {kOtherFinger, {pair.middle.x + right, pair.middle.y + down}, duration}});
}

void press(InputScript& script, bool isDown) {
  for (const char* const finger : {kOneFinger, kOtherFinger}) script.button(finger, "left", isDown);
}

Json moveTwoFingers(Session& session, const Pair& from, const Pair& to, milliseconds duration) {
  InputScript script(session);
  place(script, from, milliseconds(0));
  press(script, true);
  // On a circle, not through its middle.
  const auto turns = std::max(1L, std::lround(std::abs(to.angle - from.angle) / kTurnAtOnce));
  for (long turn = 1; turn <= turns; ++turn) {
    const double part = static_cast<double>(turn) / static_cast<double>(turns);
    place(script,
          {from.middle, from.reach + (to.reach - from.reach) * part,
           from.angle + (to.angle - from.angle) * part},
          duration / turns);
  }
  press(script, false);
  script.play();
  return nullptr;
}

// By the part of the way from the middle to the edge that the fingers are apart at most.
Json pinchBy(Session& session, const Json& parameters, double from, double to) {
  const auto area = rectangleOf(session, parameters);
  const double edge = area.width / 2;
  return moveTwoFingers(session, {middleOf(area), edge * from, 0}, {middleOf(area), edge * to, 0},
                        lasting(parameters, kDrag));
}

double percentIn(const Json& parameters) {
  return std::clamp(number(parameters, "percent", kUsualPart), 0.01, 1.0);
}

}  // namespace

// In one go what the element itself takes: in sight, and not covered.
Json tap(Session& session, const Json& parameters) {
  const bool isMiddle = number(parameters, "x", 0) == 0 && number(parameters, "y", 0) == 0;
  if (!namesElement(parameters) || !isMiddle) {
    return press(session, parameters, 1, milliseconds(0));
  }
  return click(session, {{textIn(parameters, "elementId")}, Json::object()});
}

Json doubleTap(Session& session, const Json& parameters) {
  return press(session, parameters, 2, milliseconds(0));
}

Json touchAndHold(Session& session, const Json& parameters) {
  return press(session, parameters, 1, lasting(parameters, kLongPress));
}

Json dragFromTo(Session& session, const Json& parameters) {
  auto from = parameters;
  if (namesElement(parameters, "fromElementId")) from["elementId"] = parameters["fromElementId"];
  auto to = Json::object();
  if (namesElement(parameters, "toElementId")) to["elementId"] = parameters["toElementId"];
  const bool endsInElement = namesElement(to);
  const auto end = endsInElement ? pointOf(session, to)
                   : parameters.contains("endX")
                       ? Screen::Point{number(parameters, "endX", 0), number(parameters, "endY", 0)}
                       : Screen::Point{number(parameters, "toX", 0), number(parameters, "toY", 0)};
  const bool hasStart = parameters.contains("fromX");
  const auto start = hasStart                        ? pointOf(session, from, "fromX", "fromY")
                     : parameters.contains("startX") ? pointOf(session, from, "startX", "startY")
                                                     : pointOf(session, from);
  return drag(session, start, end, lasting(parameters, milliseconds(0)), kDrag);
}

Json swipe(Session& session, const Json& parameters) {
  const auto direction = directionIn(parameters);
  const auto place = rectangleOf(session, parameters);
  const double part = std::clamp(number(parameters, "percent", kUsualPart), 0.01, 1.0) / 2;
  const auto middle = middleOf(place);
  const double right = direction.right * place.width * part;
  const double down = direction.down * place.height * part;
  return drag(session, {middle.x - right, middle.y - down}, {middle.x + right, middle.y + down},
              milliseconds(0), milliseconds(250));
}

Json scroll(Session& session, const Json& parameters) {
  if (parameters.value("toVisible", false)) {
    session.call("element.scrollIntoView", {{"element", elementIn(parameters, "elementId")}});
    return nullptr;
  }
  if (const auto text = textIn(parameters, "name"); !text.empty()) {
    session.call("element.scrollToText",
                 {{"element", elementIn(parameters, "elementId")}, {"text", text}});
    return nullptr;
  }
  const auto direction = directionIn(parameters);
  const auto place = rectangleOf(session, parameters);
  const double notches = number(parameters, "distance", 1) * kUsualNotches;
  InputScript script(session);
  script.wheel(middleOf(place), direction.right * notches, direction.down * notches);
  script.play();
  return nullptr;
}

// Below 1 the fingers close.
Json pinch(Session& session, const Json& parameters) {
  const double scale = number(parameters, "scale", 0);
  if (scale <= 0) throw Error("invalid argument", "\"scale\" is a number above 0");
  const double most = kUsualPart;
  return scale < 1 ? pinchBy(session, parameters, most, most * scale)
                   : pinchBy(session, parameters, most / scale, most);
}

Json pinchOpen(Session& session, const Json& parameters) {
  return pinchBy(session, parameters, kUsualPart * (1 - kUsualPart * percentIn(parameters)),
                 kUsualPart);
}

Json pinchClose(Session& session, const Json& parameters) {
  return pinchBy(session, parameters, kUsualPart,
                 kUsualPart * (1 - kUsualPart * percentIn(parameters)));
}

Json rotate(Session& session, const Json& parameters) {
  const auto area = rectangleOf(session, parameters);
  const double reach = std::min(area.width, area.height) / 2 * kUsualPart;
  const double angle = number(parameters, "rotation", 0);
  return moveTwoFingers(session, {middleOf(area), reach, 0}, {middleOf(area), reach, angle}, kDrag);
}

Json twoFingerTap(Session& session, const Json& parameters) {
  const auto area = rectangleOf(session, parameters);
  const Pair pair{middleOf(area), area.width / 4, 0};
  InputScript script(session);
  place(script, pair, milliseconds(0));
  press(script, true);
  press(script, false);
  script.play();
  return nullptr;
}

}  // namespace tarni::host::webdriver::gestures
