#include "host/webdriver/Finding.h"

#include <nlohmann/json.hpp>

#include "host/webdriver/Error.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

std::vector<long> asked(Session& session, const Arguments& arguments, std::optional<long> within,
                        std::size_t most) {
  const auto query = queryFor(arguments.text("using"), arguments.text("value"), within.has_value());
  return search(session, query, within, most);
}

Json first(Session& session, const Arguments& arguments, std::optional<long> within) {
  const auto handles = asked(session, arguments, within, 1);
  if (!handles.empty()) return reference(handles.front());
  throw Error("no such element", "no element fits " + arguments.text("using") + " \"" +
                                     arguments.text("value") + "\"");
}

Json all(Session& session, const Arguments& arguments, std::optional<long> within) {
  Json found = Json::array();
  for (const long handle : asked(session, arguments, within, 0)) {
    found.push_back(reference(handle));
  }
  return found;
}

long parent(const Arguments& arguments) {
  return elementOf(arguments.path.front());
}

}  // namespace

Json findElement(Session& session, const Arguments& arguments) {
  return first(session, arguments, std::nullopt);
}

Json findElements(Session& session, const Arguments& arguments) {
  return all(session, arguments, std::nullopt);
}

Json findBelow(Session& session, const Arguments& arguments) {
  return first(session, arguments, parent(arguments));
}

Json findAllBelow(Session& session, const Arguments& arguments) {
  return all(session, arguments, parent(arguments));
}

Json activeElement(Session& session, const Arguments&) {
  const auto focused = session.source().find("(//*[@focused='true'])[last()]");
  if (!focused.empty()) return reference(focused.front());
  throw Error("no such element", "nothing has the keyboard");
}

}  // namespace tarni::host::webdriver
