#include <nlohmann/json.hpp>

#include "host/source/Attributes.h"
#include "host/webdriver/Error.h"
#include "host/webdriver/Keys.h"
#include "host/webdriver/Screen.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

// The dialog on top. Throws Error ("no such alert").
long alertOf(Session& session) {
  const Screen screen(session);
  if (const auto* const dialog = screen.dialog()) return handleOf(*dialog);
  throw Error("no such alert", "no dialog keeps the user from the program");
}

std::vector<long> inAlert(Session& session, const char* kind) {
  std::vector<long> handles;
  const Json answer = session.call(
      "element.find", {{"kind", kind}, {"visible", true}, {"within", alertOf(session)}});
  for (const auto& element : answer.value("elements", Json::array())) {
    handles.push_back(handleOf(element));
  }
  return handles;
}

// The keys that every dialog knows.
Json pressKey(Session& session, const char* key) {
  const long alert = alertOf(session);
  session.call("window.activate", {{"window", alert}});
  session.call("input.keys", {{"steps", Json::array({key})}});
  return nullptr;
}

}  // namespace

Json alertText(Session& session, const Arguments&) {
  std::string lines;
  for (const long label : inAlert(session, "UILabel")) {
    const auto text = attributeOf(session.described(label), "text").value_or("");
    if (!text.empty()) lines += (lines.empty() ? "" : "\n") + text;
  }
  return lines;
}

Json acceptAlert(Session& session, const Arguments&) {
  return pressKey(session, "Enter");
}

Json dismissAlert(Session& session, const Arguments&) {
  return pressKey(session, "Escape");
}

Json typeIntoAlert(Session& session, const Arguments& arguments) {
  const auto text = arguments.text("text");
  const auto fields = inAlert(session, "UITextField");
  if (fields.empty()) throw Error("element not interactable", "the dialog asks for no text");
  session.call("element.setText", {{"element", fields.front()}, {"text", text}});
  return nullptr;
}

}  // namespace tarni::host::webdriver
