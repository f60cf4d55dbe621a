#include "host/webdriver/Screen.h"

#include <nlohmann/json.hpp>

#include "host/webdriver/Error.h"
#include "host/webdriver/Session.h"

namespace tarni::host::webdriver {

namespace {

constexpr const char* kOnScreen = "screenRect";

bool isIn(const Rectangle& rectangle, Screen::Point point) {
  return point.x >= rectangle.x && point.x < rectangle.x + rectangle.width &&
         point.y >= rectangle.y && point.y < rectangle.y + rectangle.height;
}

}  // namespace

long handleOf(const Json& description) {
  return description.value("element", 0L);
}

Screen::Screen(Session& session)
    : windows_(session.call("window.list").value("windows", Json::array())),
      chosen_(session.window),
      page_(session.page ? session.described(*session.page) : Json(nullptr)) {}

const Json* Screen::find(long window) const {
  for (const auto& one : windows_) {
    if (handleOf(one) == window) return &one;
  }
  return nullptr;
}

const Json* Screen::dialog() const {
  const Json* last = nullptr;
  for (const auto& one : windows_) {
    if (one.value("modal", false) && one.value("takesInput", true)) last = &one;
  }
  return last;
}

const Json& Screen::current() const {
  if (chosen_) {
    if (const auto* const window = find(*chosen_)) return *window;
    throw Error("no such window", "the window was closed: choose another one of those there are");
  }
  if (const auto* const over = dialog()) return *over;
  const Json* first = nullptr;
  for (const auto& one : windows_) {
    if (one.value("popup", false)) continue;
    if (one.value("key", false)) return one;
    if (first == nullptr) first = &one;
  }
  if (first != nullptr) return *first;
  throw Error("no such window", "the program shows no window");
}

std::vector<SourceTree::Window> Screen::arrangement() const {
  std::vector<SourceTree::Window> all;
  if (windows_.empty()) return all;
  const auto own = rectangleIn(current(), kOnScreen);
  for (const auto& window : windows_) {
    const auto place = rectangleIn(window, kOnScreen);
    all.push_back(
        {handleOf(window), {place.x - own.x, place.y - own.y}, window.value("takesInput", true)});
  }
  return all;
}

Screen::Point Screen::corner() const {
  const auto place = rectangleIn(page_.is_object() ? page_ : current(), kOnScreen);
  return {place.x, place.y};
}

// Elements of pages are told of in the window of their view.
Rectangle Screen::placeOf(const Json& description) const {
  const bool isOfPage = !description.contains(kOnScreen);
  auto place = rectangleIn(description, isOfPage ? "rect" : kOnScreen);
  if (isOfPage && page_.is_object()) {
    const auto view = rectangleIn(page_);
    const auto onScreen = rectangleIn(page_, kOnScreen);
    place.x += onScreen.x - view.x;
    place.y += onScreen.y - view.y;
  }
  const Point from = corner();
  return {place.x - from.x, place.y - from.y, place.width, place.height};
}

// Popups lie over the current window, and that over the others.
Json Screen::targetAt(Point point) const {
  const Point from = corner();
  const Point onScreen{point.x + from.x, point.y + from.y};
  const long own = handleOf(current());
  const Json* over = nullptr;
  int best = 0;
  for (const auto& window : windows_) {
    if (!isIn(rectangleIn(window, kOnScreen), onScreen)) continue;
    const int rank = window.value("popup", false) ? 3 : handleOf(window) == own ? 2 : 1;
    if (rank < best) continue;
    best = rank;
    over = &window;
  }
  if (over == nullptr) {
    throw Error("move target out of bounds", "no window of the program is at that point");
  }
  const auto place = rectangleIn(*over, kOnScreen);
  return {{"window", handleOf(*over)}, {"x", onScreen.x - place.x}, {"y", onScreen.y - place.y}};
}

}  // namespace tarni::host::webdriver
