#include "host/webdriver/Page.h"

#include <fstream>
#include <iterator>
#include <thread>

#include "host/guard/Clock.h"
#include "host/launch/ProgramLauncher.h"
#include "host/webdriver/Error.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPauseBetweenAsking{10};
constexpr int kTurnsBetweenLooks = 10;  // for a dialog
constexpr milliseconds kTimeToBeginToLoad{10'000};
constexpr milliseconds kTimeToShowAPage{20'000};

const std::string& pageScript() {
  static const std::string text = [] {
    std::ifstream file(scriptsFolder() / "webdriver.js");
    return std::string(std::istreambuf_iterator<char>(file), {});
  }();
  if (text.empty()) {
    throw Error("unsupported operation",
                "the page scripts are missing: " + (scriptsFolder() / "webdriver.js").string());
  }
  return text;
}

Json ownPage(Session& session) {
  for (const auto& page : pagesOf(session)) {
    if (page.value("page", 0L) == *session.page) return page;
  }
  throw Error("no such window", "the program shows the page no more: choose another context");
}

// A page that loads, or whose dialog was answered just now, is waited for.
std::string evaluated(Session& session, const std::string& script) {
  const Json parameters = {{"page", *session.page}, {"script", script}};
  try {
    return textIn(session.call("page.evaluate", parameters), "text");
  } catch (const Error& error) {
    if (error.name() != "javascript error") throw;
  }
  awaitPage(session);
  return textIn(session.call("page.evaluate", parameters), "text");
}

// Puts the script into a page that has not got it.
std::string evaluatedWithScript(Session& session, const std::string& call) {
  constexpr const char* kMissing = "none";
  const auto guarded =
      "typeof tarniDriver==='function'?" + call + ":'" + std::string(kMissing) + "'";
  auto answer = evaluated(session, guarded);
  if (answer != kMissing) return answer;
  evaluated(session, pageScript());
  return evaluated(session, guarded);
}

// Of JSON and, for engines of old, of JavaScript.
std::string literal(const Json& value) {
  return value.dump(-1, ' ', true);
}

std::string frameOf(const Session& session) {
  return session.frames.empty() ? "null" : literal(session.frames.back());
}

std::string awaited(Session& session, const Json& number) {
  const auto limit = session.timeouts.script;
  const auto deadline = deadlineIn(limit.value_or(std::chrono::hours(24)));
  // Another page has no answer.
  const auto call =
      "typeof tarniDriverAnswer==='function'?tarniDriverAnswer(" + number.dump() + "):'none'";
  while (true) {
    auto text = evaluated(session, call);
    if (!text.empty()) return text;
    if (Clock::now() >= deadline) {
      throw Error("script timeout", "the script had no answer in time");
    }
    std::this_thread::sleep_for(kPauseBetweenAsking);
  }
}

Json valueOf(Session& session, std::string text) {
  Json told = readJson(text);
  if (told.is_object() && told.contains("pending")) {
    text = awaited(session, told["pending"]);
    told = readJson(text);
  }
  if (!told.is_object()) {
    // Of the standard: a script that opens one has nothing to say.
    if (alertOver(session, *session.page)) return nullptr;
    throw Error("javascript error", "the script is none, or the page went on to another");
  }
  if (const auto error = textIn(told, "error"); !error.empty()) {
    throw Error(error, textIn(told, "message"));
  }
  return told.value("value", Json(nullptr));
}

}  // namespace

Json askPage(Session& session, const std::string& command, const Json& arguments) {
  return valueOf(
      session, evaluatedWithScript(session, "tarniDriver('" + command + "'," + literal(arguments) +
                                                "," + frameOf(session) + ")"));
}

// A function that stands in the call is not an `eval`, which a page's policy may forbid.
Json runScript(Session& session, const std::string& script, const Json& arguments, bool isAsync) {
  const auto function = session.frames.empty() ? "function(){" + script + "\n}" : literal(script);
  return valueOf(
      session, evaluatedWithScript(session, "tarniDriverScript(" + function + "," +
                                                literal(arguments) + "," + frameOf(session) + "," +
                                                (isAsync ? "true" : "false") + ")"));
}

// One that just begins to load cannot be asked for its title.
Json pagesOf(Session& session) {
  const auto deadline = Clock::now() + kTimeToBeginToLoad;
  while (true) {
    try {
      return session.call("page.list").value("pages", Json::array());
    } catch (const Error& error) {
      if (error.name() != "javascript error" || Clock::now() >= deadline) throw;
    }
    std::this_thread::sleep_for(kPauseBetweenAsking);
  }
}

void enterFirstPage(Session& session) {
  const auto deadline = Clock::now() + kTimeToShowAPage;
  while (true) {
    const Json pages = pagesOf(session);
    if (!pages.empty()) {
      session.page = pages.front().value("page", 0L);
      return;
    }
    if (Clock::now() >= deadline) break;
    std::this_thread::sleep_for(kPauseBetweenAsking);
  }
  throw Error("session not created",
              "the program shows no page, which appium:autoWebview asks for");
}

void awaitPage(Session& session) {
  const auto& timeouts = session.timeouts;
  const auto untilLoaded = deadlineIn(timeouts.pageLoad);
  const auto untilItAnswers = deadlineIn(timeouts.script.value_or(timeouts.pageLoad));
  for (int turn = 1;; ++turn) {
    const Json page = ownPage(session);
    const bool isSilent = page.value("silent", false);
    if (!isSilent && !page.value("loading", false)) return;
    if (turn % kTurnsBetweenLooks == 0) {
      if (const auto said = alertOver(session, *session.page))
        throw Error("unexpected alert open", *said);
    }
    if (isSilent && Clock::now() >= untilItAnswers) {
      throw Error("script timeout",
                  "the page does not answer: it is busy, or its process has ended");
    }
    if (Clock::now() >= untilLoaded) throw Error("timeout", "the page is not loaded in time");
    std::this_thread::sleep_for(kPauseBetweenAsking);
  }
}

void awaitAnotherDocument(Session& session, const Json& origin) {
  const auto asked = "performance.timeOrigin===" + literal(origin) + "?'':document.readyState";
  const auto untilBegun = Clock::now() + kTimeToBeginToLoad;
  const auto untilLoaded = deadlineIn(session.timeouts.pageLoad);
  while (true) {
    const auto state = evaluated(session, asked);
    const auto now = Clock::now();
    if (state == "complete" || (state.empty() && now >= untilBegun)) return;
    if (now >= untilLoaded) throw Error("timeout", "the page is not loaded in time");
    std::this_thread::sleep_for(kPauseBetweenAsking);
  }
}

}  // namespace tarni::host::webdriver
