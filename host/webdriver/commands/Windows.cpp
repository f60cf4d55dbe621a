#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>

#include "host/guard/Text.h"
#include "host/source/Attributes.h"
#include "host/webdriver/Error.h"
#include "host/webdriver/Screen.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

constexpr double kLongestSide = 2'147'483'647;

Json placeOf(const Json& window) {
  const auto place = rectangleIn(window, "screenRect");
  return {{"x", std::lround(place.x)},
          {"y", std::lround(place.y)},
          {"width", std::lround(place.width)},
          {"height", std::lround(place.height)}};
}

void resize(Session& session, const Json& window, double width, double height) {
  session.call("window.resize",
               {{"window", handleOf(window)}, {"width", width}, {"height", height}});
}

Json nowAt(Session& session) {
  return placeOf(Screen(session).current());
}

}  // namespace

Json currentWindow(Session& session, const Arguments&) {
  return std::to_string(handleOf(Screen(session).current()));
}

// Popups are parts of the window that they came from.
Json windows(Session& session, const Arguments&) {
  Json handles = Json::array();
  const Screen screen(session);
  for (const auto& window : screen.windows()) {
    if (!window.value("popup", false)) handles.push_back(std::to_string(handleOf(window)));
  }
  return handles;
}

Json switchToWindow(Session& session, const Arguments& arguments) {
  const bool isOld = arguments.body.contains("name") && !arguments.body.contains("handle");
  const auto handle = arguments.text(isOld ? "name" : "handle");
  const auto number = wholeNumberIn<long>(handle);
  if (!number || Screen(session).find(*number) == nullptr) {
    throw Error("no such window", "the program shows no window " + handle);
  }
  session.window = *number;
  session.call("window.activate", {{"window", *number}});
  return nullptr;
}

Json closeWindow(Session& session, const Arguments& arguments) {
  session.call("window.close", {{"window", handleOf(Screen(session).current())}});
  return windows(session, arguments);
}

Json title(Session& session, const Arguments&) {
  const Screen screen(session);
  return attributeOf(screen.current(), "title").value_or("");
}

Json windowPlace(Session& session, const Arguments&) {
  return nowAt(session);
}

Json resizeWindow(Session& session, const Arguments& arguments) {
  const auto wanted = [&arguments](const char* name) {
    const auto found = arguments.body.find(name);
    return found == arguments.body.end() || found->is_null()
               ? std::nullopt
               : std::optional(arguments.number(name));
  };
  const auto width = wanted("width");
  const auto height = wanted("height");
  wanted("x");  // it stays where it is
  wanted("y");
  for (const auto& side : {width, height}) {
    if (side && (*side < 0 || *side > kLongestSide)) {
      throw Error("invalid argument", "a side is from 0 to 2^31 - 1");
    }
  }
  if (width && height) resize(session, Screen(session).current(), *width, *height);
  return nowAt(session);
}

Json maximize(Session& session, const Arguments&) {
  const Json screen = session.call("app.info").value("screen", Json::object());
  resize(session, Screen(session).current(), screen.value("width", 0.0),
         screen.value("height", 0.0));
  return nowAt(session);
}

Json orientation(Session& session, const Arguments&) {
  const Json screen = session.call("app.info").value("screen", Json::object());
  return screen.value("width", 0.0) > screen.value("height", 0.0) ? "LANDSCAPE" : "PORTRAIT";
}

Json setOrientation(Session& session, const Arguments& arguments) {
  if (orientation(session, arguments) == arguments.text("orientation")) return nullptr;
  throw Error("unsupported operation", "the screen of a program does not turn");
}

}  // namespace tarni::host::webdriver
