#include "host/webdriver/Session.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "host/guard/Text.h"
#include "host/guard/Words.h"
#include "host/session/SessionLines.h"
#include "host/webdriver/Error.h"
#include "host/webdriver/Page.h"
#include "host/webdriver/Report.h"
#include "host/webdriver/Screen.h"

namespace tarni::host::webdriver {

namespace {

constexpr std::chrono::seconds kTimeToAnswer{5};

Json answered(const Capabilities& wanted, const Json& info) {
  Json all = wanted.written;
  const auto toolkit = textIn(info, "toolkit");
  const bool isQt = toolkit.starts_with("Qt") || toolkit == "headless";
  all["platformName"] = isQt ? "linux" : "iOS";
  all["appium:automationName"] = "Tarni";
  all["timeouts"] = wanted.timeouts.written();
  all["tarni:toolkit"] = toolkit;
  all["tarni:process"] = info.value("pid", Json(nullptr));
  all.erase("webSocketUrl");
  all.erase("browserName");
  return all;
}

// One that shows its window may hang all the same.
Json infoOf(SessionClient& client) {
  try {
    return client.call("app.info", Json::object(), kTimeToAnswer);
  } catch (const RequestError& error) {
    throw Error("session not created", error.what());
  }
}

}  // namespace

Session::Session(std::string id, const Capabilities& wanted, Starter& starter,
                 const std::stop_token& stop)
    : timeouts(wanted.timeouts), id_(std::move(id)), program_(wanted, id_, starter, stop) {
  const Json info = infoOf(program_.client());
  hasInput_ = info.value("hasInput", false);
  capabilities_ = answered(wanted, info);
  if (!wanted.report.empty()) beginReport(wanted);
  if (wanted.startsInPage) enterFirstPage(*this);
}

Session::~Session() = default;

// A file of its own, as all sessions of a client's tests ask for the same folder.
void Session::beginReport(const Capabilities& wanted) {
  const auto file = std::filesystem::absolute(wanted.report) / (id_ + ".html");
  PlayReport head{
      .file = "WebDriver session " + id_,
      .program = joined(wanted.command.empty() ? std::vector{wanted.attach} : wanted.command),
      .played = localNow(),
      .recorded = {},
      .toolkit = textIn(capabilities_, "tarni:toolkit"),
      .warnings = {}};
  try {
    report_ = std::make_unique<Report>(file, std::move(head));
  } catch (const std::runtime_error& error) {
    throw Error("session not created", error.what());
  }
  capabilities_["tarni:report"] = file.string();
}

Json Session::call(const std::string& method, Json parameters) {
  return call(method, std::move(parameters), SessionClient::kUsualTimeout);
}

Json Session::call(const std::string& method, Json parameters, std::chrono::milliseconds timeout) {
  try {
    Json answer = program_.client().call(method, std::move(parameters), timeout);
    if (report_) report_->addAnswer(answer);
    return answer;
  } catch (const RequestError& error) {
    throw Error(error.name(), error.what());
  }
}

Json Session::described(Handle element) {
  return objectIn(call("element.describe", {{"element", element}}), "description");
}

const SourceTree& Session::source() {
  const Screen screen(*this);
  auto told = tree(source_ ? sourceVersion_ : 0);
  const bool isUpToDate = source_ && !told.value("whole", true) &&
                          source_->update(told["elements"], told.value("gone", Json::array()));
  if (!isUpToDate) {
    if (!told.value("whole", true)) told = tree(0);
    source_ = std::make_unique<SourceTree>(told["elements"]);
  }
  sourceVersion_ = told.value("version", 0L);
  source_->arrange(screen.arrangement());
  return *source_;
}

// What changed since that version, or everything for 0.
Json Session::tree(long since) {
  Json told = call("tree.get", {{"since", since}});
  if (!told.contains("elements")) told["elements"] = Json::array();
  return told;
}

Json reference(Session::Handle element) {
  return {{kElementKey, std::to_string(element)}};
}

Session::Handle elementOf(const std::string& id) {
  if (const auto handle = wholeNumberIn<Session::Handle>(id)) return *handle;
  throw Error("no such element", "no element of the program has the identifier " + id);
}

std::optional<Session::Handle> referred(const Json& value) {
  const auto id = value.is_object() ? textIn(value, kElementKey) : "";
  return id.empty() ? std::nullopt : std::optional(elementOf(id));
}

}  // namespace tarni::host::webdriver
