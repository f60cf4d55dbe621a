#include "host/webdriver/Capabilities.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>

#include "host/guard/Text.h"
#include "host/guard/Words.h"
#include "host/launch/VirtualDisplay.h"
#include "host/webdriver/Error.h"

namespace tarni::host::webdriver {

namespace {

using std::chrono::milliseconds;

constexpr double kLongestTimeout = 9'007'199'254'740'991;
constexpr std::string_view kNoNames("=\0", 2);  // in the name of a variable
constexpr int kLargestDisplay = 32'767;         // as X counts

[[noreturn]] void refuse(const std::string& name, const std::string& what) {
  throw Error("invalid argument", "\"" + name + "\" is " + what);
}

milliseconds timeoutIn(const std::string& name, const Json& value) {
  const double number = value.is_number() ? value.get<double>() : -1;
  if (number < 0 || number > kLongestTimeout || number != std::floor(number)) {
    refuse(name, "a whole number, 0 or more");
  }
  return milliseconds(static_cast<long long>(number));
}

std::string textOf(const std::string& name, const Json& value) {
  if (!value.is_string()) refuse(name, "a text");
  auto text = value.get<std::string>();
  if (text.find('\0') != std::string::npos) refuse(name, "a text without a null");
  return text;
}

bool truthOf(const std::string& name, const Json& value) {
  if (!value.is_boolean()) refuse(name, "true or false");
  return value.get<bool>();
}

// None of a line of blanks.
std::vector<std::string> wordsIn(const std::string& name, const std::string& line,
                                 const std::string& what) {
  if (line.find_first_not_of(" \t\n") == std::string::npos) return {};
  try {
    return wordsOf(line);
  } catch (const std::invalid_argument& error) {
    refuse(name, what + ": " + error.what());
  }
}

// A file, or a command line.
std::vector<std::string> commandOf(const std::string& name, const std::string& app) {
  constexpr const char* kWhat = "a program or a command line";
  std::error_code none;
  if (std::filesystem::exists(app, none)) return {app};
  auto words = wordsIn(name, app, kWhat);
  if (words.empty()) refuse(name, kWhat);
  return words;
}

void takeEnvironment(Capabilities& to, const std::string& name, const Json& value) {
  if (!value.is_object()) refuse(name, "an object of texts");
  for (const auto& [variable, text] : value.items()) {
    const bool isName = !variable.empty() && variable.find_first_of(kNoNames) == std::string::npos;
    if (!isName) refuse(name, "an object of variables");
    to.environment[variable] = text.is_string() ? textOf(name, text) : compact(text);
  }
}

void takeArguments(Capabilities& to, const std::string& name, const Json& value) {
  if (value.is_string()) {
    const auto words = wordsIn(name, textOf(name, value), "a list of texts, or a line of words");
    to.command.insert(to.command.end(), words.begin(), words.end());
    return;
  }
  if (!value.is_array()) refuse(name, "a list of texts, or a line of words");
  for (const auto& word : value) to.command.push_back(textOf(name, word));
}

bool isSide(std::string_view text) {
  const auto side = wholeNumberIn<int>(text);
  return side && *side > 0 && *side <= kLargestDisplay;
}

void takeDisplay(Capabilities& to, const std::string& name, const Json& value) {
  to.display = textOf(name, value);
  const std::string_view text = to.display;
  const auto by = std::min(text.find('x'), text.size());
  const bool isSize = by < text.size() && isSide(text.substr(0, by)) && isSide(text.substr(by + 1));
  if (!isSize && text != "none" && !text.starts_with(':')) {
    refuse(name, "\"WIDTHxHEIGHT\", a display like \":0\", or \"none\"");
  }
}

using Take = void (*)(Capabilities& to, const std::string& name, const Json& value);

// What the standard and the dialect ask for and this server knows; `app` stands before its
// arguments.
struct Known {
  const char* name;
  Take take;
};
constexpr Known kKnown[] = {
    {"appium:app", [](Capabilities& to, const std::string& name,
                      const Json& value) { to.command = commandOf(name, textOf(name, value)); }},
    {"appium:arguments", takeArguments},
    {"appium:environment", takeEnvironment},
    {"appium:environ", takeEnvironment},
    {"appium:noReset", [](Capabilities& to, const std::string& name,
                          const Json& value) { to.keepsState = truthOf(name, value); }},
    {"appium:autoWebview", [](Capabilities& to, const std::string& name,
                              const Json& value) { to.startsInPage = truthOf(name, value); }},
    {"appium:newCommandTimeout",
     [](Capabilities& to, const std::string& name, const Json& value) {
       constexpr std::chrono::seconds kLongest = std::chrono::hours(24 * 365);
       to.newCommandTimeout =
           std::min(std::chrono::seconds(timeoutIn(name, value).count()), kLongest);
     }},
    {"timeouts",
     [](Capabilities& to, const std::string&, const Json& value) { to.timeouts.take(value); }},
    {"tarni:display", takeDisplay},
    {"tarni:attach", [](Capabilities& to, const std::string& name,
                        const Json& value) { to.attach = textOf(name, value); }},
    {"tarni:report", [](Capabilities& to, const std::string& name,
                        const Json& value) { to.report = textOf(name, value); }},
};

constexpr const char* kOfTheStandard[] = {"browserName",
                                          "browserVersion",
                                          "platformName",
                                          "acceptInsecureCerts",
                                          "pageLoadStrategy",
                                          "proxy",
                                          "setWindowRect",
                                          "timeouts",
                                          "strictFileInteractability",
                                          "unhandledPromptBehavior",
                                          "webSocketUrl"};

const Json& validated(const Json& capabilities, const char* where) {
  if (!capabilities.is_object()) refuse(where, "an object");
  for (const auto& [name, value] : capabilities.items()) {
    const bool isVendors = name.find(':') != std::string::npos;
    const bool isKnown = std::ranges::find(kOfTheStandard, name) != std::end(kOfTheStandard);
    if (!isVendors && !isKnown) refuse(name, "no capability of the standard, and has no prefix");
  }
  return capabilities;
}

Json merged(const Json& always, const Json& first) {
  Json all = always;
  for (const auto& [name, value] : first.items()) {
    if (all.contains(name)) refuse(name, "in alwaysMatch and in firstMatch");
    all[name] = value;
  }
  return all;
}

// "" when these can be served, else why not.
std::string mismatch(const Json& wanted) {
  const auto is = [&wanted](const char* name, std::initializer_list<std::string_view> served) {
    const auto text = textIn(wanted, name);
    return text.empty() ||
           std::ranges::any_of(served, [&](auto one) { return isSameInAnyCase(text, one); });
  };
  if (!is("browserName", {})) return "there is no browser here";
  if (!is("platformName", {"linux", "ios", "any"})) return "the platform is linux, or iOS";
  if (!is("appium:automationName", {"tarni"})) return "the name of this automation is Tarni";
  return "";
}

Capabilities taken(Json wanted) {
  Capabilities result;
  result.display = kUsualDisplaySize;
  for (const auto& [name, take] : kKnown) {
    const auto found = wanted.find(name);
    if (found != wanted.end() && !found->is_null()) take(result, name, *found);
  }
  if (result.command.empty() == result.attach.empty()) {
    throw Error("session not created",
                "either appium:app names a program to start, or tarni:attach one that runs");
  }
  result.written = std::move(wanted);
  return result;
}

}  // namespace

void Timeouts::take(const Json& object) {
  if (!object.is_object()) refuse("timeouts", "an object");
  for (const auto& [name, value] : object.items()) {
    if (name == "implicit") {
      implicit = timeoutIn(name, value);
    } else if (name == "pageLoad") {
      pageLoad = timeoutIn(name, value);
    } else if (name == "script") {
      script = value.is_null() ? std::nullopt : std::optional(timeoutIn(name, value));
    }
  }
}

Json Timeouts::written() const {
  return {{"script", script ? Json(script->count()) : Json(nullptr)},
          {"pageLoad", pageLoad.count()},
          {"implicit", implicit.count()}};
}

Capabilities Capabilities::match(const Json& parameters) {
  const auto wanted = parameters.find("capabilities");
  if (wanted == parameters.end() || !wanted->is_object()) refuse("capabilities", "an object");
  const Json always = validated(wanted->value("alwaysMatch", Json::object()), "alwaysMatch");
  const Json choices = wanted->value("firstMatch", Json::array({Json::object()}));
  if (!choices.is_array() || choices.empty()) refuse("firstMatch", "a list of one or more");
  std::vector<Json> all;
  for (const auto& first : choices) all.push_back(merged(always, validated(first, "firstMatch")));
  std::string why;
  for (auto& one : all) {
    why = mismatch(one);
    if (why.empty()) return taken(std::move(one));
  }
  throw Error("session not created", why);
}

}  // namespace tarni::host::webdriver
