#include <nlohmann/json.hpp>

#include "host/webdriver/Error.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

Json capabilities(Session& session, const Arguments&) {
  return session.capabilities();
}

Json timeouts(Session& session, const Arguments&) {
  return session.timeouts.written();
}

Json setTimeouts(Session& session, const Arguments& arguments) {
  session.timeouts.take(arguments.body);
  return nullptr;
}

Json settings(Session& session, const Arguments&) {
  return session.settings;
}

Json setSettings(Session& session, const Arguments& arguments) {
  const Json added = arguments.body.value("settings", Json(nullptr));
  if (!added.is_object()) throw Error("invalid argument", "\"settings\" is an object");
  session.settings.update(added);
  return nullptr;
}

Json back(Session& session, const Arguments&) {
  session.call("input.keys", {{"steps", Json::array({"Escape"})}});
  return nullptr;
}

Json doNothing(Session&, const Arguments&) {
  return nullptr;
}

// The program of a session runs in front as long as the session does.
Json appState(Session&, const Arguments&) {
  return 4;
}

Json logTypes(Session&, const Arguments&) {
  return Json::array({"program"});
}

Json log(Session& session, const Arguments&) {
  auto& program = session.program();
  const auto said = program.lastOutput();
  if (said.empty()) return Json::array();
  return Json::array(
      {{{"level", "INFO"}, {"message", said}, {"timestamp", program.lastOutputTime()}}});
}

// Clients that would send a file for a text that is the path of one type the text when they read
// this, which is what a dialog for files wants.
Json refuseFile(Session&, const Arguments&) {
  throw Error("unknown command", "Unrecognized command: POST se/file: a path is typed as it is");
}

}  // namespace tarni::host::webdriver
