#include <chrono>
#include <nlohmann/json.hpp>
#include <thread>

#include "host/guard/Clock.h"
#include "host/webdriver/Error.h"
#include "host/webdriver/InputScript.h"
#include "host/webdriver/Keys.h"
#include "host/webdriver/Page.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

constexpr std::chrono::milliseconds kPauseBetweenSearchesInPage{25};

Json lookedFor(Session& session, const Arguments& arguments, bool needsAny) {
  Json asked = {{"using", arguments.text("using")}, {"value", arguments.text("value")}};
  if (!arguments.path.empty()) asked["within"] = arguments.path.front();
  const auto deadline = deadlineIn(session.timeouts.implicit);
  while (true) {
    Json found = askPage(session, "find", asked);
    if (!found.empty()) return found;
    if (Clock::now() >= deadline) break;
    std::this_thread::sleep_for(kPauseBetweenSearchesInPage);
  }
  if (!needsAny) return Json::array();
  throw Error("no such element", "no element of the page fits " + arguments.text("using") + " \"" +
                                     arguments.text("value") + "\"");
}

Json about(const Arguments& arguments) {
  Json asked = {{"element", arguments.path.front()}};
  if (arguments.path.size() > 1) asked["name"] = arguments.path[1];
  return asked;
}

// What was done has come to the page, and a page that it leads to has come, too.
void settle(Session& session) {
  try {
    askPage(session, "settle");
  } catch (const Error&) {
    // It is on its way to another page, or shows a dialog.
  }
}

// `document` is what tells it from another that is to come, or null.
Json leave(Session& session, const Json& document) {
  session.frames.clear();
  settle(session);
  awaitPage(session);
  if (!document.is_null()) awaitAnotherDocument(session, document);
  return nullptr;
}

Json goThrough(Session& session, int by) {
  return leave(session, askPage(session, "history", {{"by", by}}));
}

void expire(Session& session, const std::string& name) {
  askPage(session, "addCookie", {{"cookie", {{"name", name}, {"value", ""}, {"expiry", 1}}}});
}

}  // namespace

Json findInPage(Session& session, const Arguments& arguments) {
  return lookedFor(session, arguments, true).front();
}

Json findAllInPage(Session& session, const Arguments& arguments) {
  return lookedFor(session, arguments, false);
}

Json askOfElement(Session& session, const Arguments& arguments, const char* command) {
  return askPage(session, command, about(arguments));
}

Json clickInPage(Session& session, const Arguments& arguments) {
  const Json point = askPage(session, "clickable", about(arguments));
  if (point.is_object()) {
    InputScript script(session);
    script.click({point.value("x", 0.0), point.value("y", 0.0)});
    script.play();
  }
  settle(session);
  return nullptr;
}

Json sendKeysInPage(Session& session, const Arguments& arguments) {
  const auto text = typed(arguments);
  askPage(session, "focus", about(arguments));
  session.call("element.focus", {{"element", *session.page}});
  typeText(session, text);
  settle(session);
  return nullptr;
}

Json navigate(Session& session, const Arguments& arguments) {
  return leave(session, askPage(session, "navigate", {{"url", arguments.text("url")}}));
}

Json backInPage(Session& session, const Arguments&) {
  return goThrough(session, -1);
}

Json forward(Session& session, const Arguments&) {
  return goThrough(session, 1);
}

Json refresh(Session& session, const Arguments&) {
  return goThrough(session, 0);
}

Json switchToFrame(Session& session, const Arguments& arguments) {
  const auto id = arguments.body.value("id", Json(nullptr));
  if (id.is_null()) {
    session.frames.clear();
    return nullptr;
  }
  if (!id.is_number_unsigned() && !id.is_object()) {
    throw Error("invalid argument", "\"id\" is null, a number or an element");
  }
  session.frames.push_back(askPage(session, "frame", {{"id", id}}));
  return nullptr;
}

Json leaveFrame(Session& session, const Arguments&) {
  if (!session.frames.empty()) session.frames.pop_back();
  return nullptr;
}

Json cookies(Session& session, const Arguments&) {
  return askPage(session, "cookies");
}

Json cookieNamed(Session& session, const Arguments& arguments) {
  for (const auto& cookie : askPage(session, "cookies")) {
    if (cookie.value("name", "") == arguments.path.front()) return cookie;
  }
  throw Error("no such cookie", "the page has no cookie " + arguments.path.front());
}

Json addCookie(Session& session, const Arguments& arguments) {
  const Json& cookie = objectIn(arguments.body, "cookie");
  if (textIn(cookie, "name").empty()) throw Error("invalid argument", "a cookie has a name");
  return askPage(session, "addCookie", {{"cookie", cookie}});
}

Json deleteCookie(Session& session, const Arguments& arguments) {
  expire(session, arguments.path.front());
  return nullptr;
}

Json deleteCookies(Session& session, const Arguments&) {
  for (const auto& cookie : askPage(session, "cookies")) expire(session, cookie.value("name", ""));
  return nullptr;
}

}  // namespace tarni::host::webdriver
