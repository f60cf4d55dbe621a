#include <charconv>
#include <nlohmann/json.hpp>

#include "host/webdriver/Error.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

constexpr const char* kNative = "NATIVE_APP";
constexpr std::string_view kPage = "WEBVIEW_";

std::string nameOf(long page) {
  return std::string(kPage) + std::to_string(page);
}

std::vector<long> pages(Session& session) {
  std::vector<long> all;
  const Json answer = session.call("page.list");
  for (const auto& page : answer.value("pages", Json::array())) {
    all.push_back(page.value("page", 0L));
  }
  return all;
}

}  // namespace

Json context(Session& session, const Arguments&) {
  return session.page ? nameOf(*session.page) : kNative;
}

Json contexts(Session& session, const Arguments&) {
  Json names = Json::array({kNative});
  for (const long page : pages(session)) names.push_back(nameOf(page));
  return names;
}

Json switchToContext(Session& session, const Arguments& arguments) {
  const auto name = arguments.body.value("name", Json(kNative));
  session.frames.clear();
  if (name.is_null() || name == kNative) {
    session.page.reset();
    return nullptr;
  }
  for (const long page : pages(session)) {
    if (name != nameOf(page)) continue;
    session.page = page;
    return nullptr;
  }
  throw Error("no such window", "there is no context " + compact(name));
}

}  // namespace tarni::host::webdriver
