#include <nlohmann/json.hpp>

#include "host/webdriver/Error.h"
#include "host/webdriver/Page.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

constexpr const char* kNative = "NATIVE_APP";
constexpr std::string_view kPage = "WEBVIEW_";

std::string nameOf(long page) {
  return std::string(kPage) + std::to_string(page);
}

long pageNamed(Session& session, const Json& name) {
  for (const auto& page : pagesOf(session)) {
    const long handle = page.value("page", 0L);
    if (name == nameOf(handle)) return handle;
  }
  throw Error("no such window", "there is no context " + compact(name));
}

}  // namespace

Json context(Session& session, const Arguments&) {
  return session.page ? nameOf(*session.page) : kNative;
}

Json contexts(Session& session, const Arguments&) {
  Json names = Json::array({kNative});
  for (const auto& page : pagesOf(session)) names.push_back(nameOf(page.value("page", 0L)));
  return names;
}

Json switchToContext(Session& session, const Arguments& arguments) {
  const auto name = arguments.body.value("name", Json(kNative));
  session.page =
      name.is_null() || name == kNative ? std::nullopt : std::optional(pageNamed(session, name));
  session.frames.clear();
  return nullptr;
}

}  // namespace tarni::host::webdriver
