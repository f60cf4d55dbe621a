#include <nlohmann/json.hpp>
#include <string_view>

#include "host/webdriver/Error.h"
#include "host/webdriver/MobileCommands.h"
#include "host/webdriver/Page.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

const Json& argumentAt(const Json& all, std::size_t at) {
  static const Json nothing = nullptr;
  return at < all.size() ? all[at] : nothing;
}

Arguments aboutFirst(const Json& given, std::vector<std::string> more) {
  const auto element = referred(argumentAt(given, 0));
  if (!element) throw Error("invalid argument", "the script's first argument is no element");
  more.insert(more.begin(), std::to_string(*element));
  return {std::move(more), Json::object()};
}

Json scriptOfIsDisplayed(Session& session, const Json& given) {
  return isDisplayed(session, aboutFirst(given, {}));
}

Json scriptOfAttribute(Session& session, const Json& given) {
  const Json& name = argumentAt(given, 1);
  if (!name.is_string()) throw Error("invalid argument", "the name of an attribute is a text");
  return attribute(session, aboutFirst(given, {name.get<std::string>()}));
}

Json scriptOfSubmit(Session&, const Json&) {
  throw Error("unsupported operation", "programs have no forms: press the button");
}

Json scriptOfSource(Session& session, const Json&) {
  return source(session, {});
}

// Clients send these for commands that the standard has no request for, or has one for since.
struct Atom {
  std::string_view start;
  Json (*answer)(Session& session, const Json& given);
};
constexpr Atom kAtoms[] = {
    {"/* isDisplayed */", scriptOfIsDisplayed},
    {"/* getAttribute */", scriptOfAttribute},
    {"/* submitForm */", scriptOfSubmit},
    {"var source = document.documentElement.outerHTML", scriptOfSource},
};

const Json& givenIn(const Arguments& arguments) {
  static const Json none = Json::array();
  const auto found = arguments.body.find("args");
  if (found == arguments.body.end()) return none;
  if (found->is_array()) return *found;
  throw Error("invalid argument", "\"args\" is a list");
}

// What stands behind "mobile:", with blanks or without.
std::optional<std::string> nameBehind(std::string_view script, std::string_view prefix) {
  if (!script.starts_with(prefix)) return std::nullopt;
  script.remove_prefix(prefix.size());
  while (script.starts_with(' ')) script.remove_prefix(1);
  return std::string(script);
}

}  // namespace

Json executeSync(Session& session, const Arguments& arguments) {
  const auto script = arguments.text("script");
  const Json& given = givenIn(arguments);
  const Json parameters = argumentAt(given, 0).is_object() ? given[0] : Json::object();
  if (const auto gesture = nameBehind(script, "mobile:")) {
    return runMobileCommand(session, *gesture, parameters);
  }
  if (nameBehind(script, "tarni:") == "call") return callChannel(session, parameters);
  for (const auto& [start, answer] : kAtoms) {
    if (script.starts_with(start)) return answer(session, given);
  }
  throw Error("unknown method", "scripts run in web contexts only");
}

Json runInPage(Session& session, const Arguments& arguments) {
  const auto script = arguments.text("script");
  if (nameBehind(script, "mobile:") || nameBehind(script, "tarni:")) {
    return executeSync(session, arguments);
  }
  return runScript(session, script, givenIn(arguments), false);
}

Json runAsyncInPage(Session& session, const Arguments& arguments) {
  return runScript(session, arguments.text("script"), givenIn(arguments), true);
}

Json executeAsync(Session&, const Arguments&) {
  throw Error("unknown method", "scripts run in web contexts only");
}

}  // namespace tarni::host::webdriver
