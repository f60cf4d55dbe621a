#include <nlohmann/json.hpp>

#include "host/webdriver/Screen.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

Json picture(Session& session, const Arguments&) {
  const long window = session.page.value_or(0);
  const Json answer = window != 0 ? session.call("element.picture", {{"element", window}})
                                  : session.call("window.picture",
                                                 {{"window", handleOf(Screen(session).current())}});
  return answer.value("data", "");
}

Json elementPicture(Session& session, const Arguments& arguments) {
  const long handle = elementOf(arguments.path.front());
  session.call("element.scrollIntoView", {{"element", handle}});
  return session.call("element.picture", {{"element", handle}}).value("data", "");
}

}  // namespace tarni::host::webdriver
