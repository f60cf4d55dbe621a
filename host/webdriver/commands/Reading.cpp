#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "host/source/Attributes.h"
#include "host/webdriver/Screen.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

Json elementAt(Session& session, const Arguments& arguments) {
  return session.described(elementOf(arguments.path.front()));
}

// An element by itself knows nothing of the current window and of those beside it.
constexpr const char* kPlaces[] = {"x", "y", "width", "height", "index"};

Json placeAttribute(Session& session, long element, const std::string& name) {
  const auto value = session.source().node(element).attribute(name.c_str());
  return value ? Json(value.value()) : Json(nullptr);
}

bool is(const Json& element, const char* name) {
  return attributeOf(element, name) == "true";
}

}  // namespace

Json attribute(Session& session, const Arguments& arguments) {
  const Json element = elementAt(session, arguments);
  const auto& name = arguments.path.back();
  if (std::ranges::find(kPlaces, name) != std::end(kPlaces)) {
    return placeAttribute(session, handleOf(element), name);
  }
  const auto value = attributeOf(element, name);
  return value ? Json(*value) : Json(nullptr);
}

Json isDisplayed(Session& session, const Arguments& arguments) {
  return is(elementAt(session, arguments), "visible");
}

Json isEnabled(Session& session, const Arguments& arguments) {
  return is(elementAt(session, arguments), "enabled");
}

Json isSelected(Session& session, const Arguments& arguments) {
  const Json element = elementAt(session, arguments);
  return is(element, "checked") || is(element, "selected");
}

Json label(Session& session, const Arguments& arguments) {
  return attributeOf(elementAt(session, arguments), "label").value_or("");
}

Json place(Session& session, const Arguments& arguments) {
  const Json element = elementAt(session, arguments);
  const auto rectangle = Screen(session).placeOf(element);
  return {{"x", std::lround(rectangle.x)},
          {"y", std::lround(rectangle.y)},
          {"width", std::lround(rectangle.width)},
          {"height", std::lround(rectangle.height)}};
}

Json source(Session& session, const Arguments&) {
  return session.source().xml();
}

Json tagName(Session& session, const Arguments& arguments) {
  return attributeOf(elementAt(session, arguments), "type").value_or("");
}

Json text(Session& session, const Arguments& arguments) {
  return attributeOf(elementAt(session, arguments), "text").value_or("");
}

}  // namespace tarni::host::webdriver
