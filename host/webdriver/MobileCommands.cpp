#include "host/webdriver/MobileCommands.h"

#include <algorithm>
#include <ctime>
#include <nlohmann/json.hpp>
#include <string_view>

#include "host/webdriver/Error.h"
#include "host/webdriver/Gestures.h"
#include "host/webdriver/Page.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

Json deviceTime(Session&, const Json&) {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  gmtime_r(&now, &parts);
  std::string text(32, '\0');
  text.resize(std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S+00:00", &parts));
  return text;
}

Json detailedContexts(Session& session, const Json&) {
  Json all = Json::array({{{"id", "NATIVE_APP"}}});
  for (const auto& page : pagesOf(session)) {
    all.push_back({{"id", "WEBVIEW_" + compact(page.value("page", Json(0)))},
                   {"title", page.value("title", "")},
                   {"url", page.value("address", "")}});
  }
  return all;
}

Json alert(Session& session, const Json& parameters) {
  const auto action = textIn(parameters, "action");
  if (action == "accept") return acceptAlert(session, {});
  if (action == "dismiss") return dismissAlert(session, {});
  throw Error("invalid argument", "\"action\" is accept or dismiss");
}

Json nothing(Session&, const Json&) {
  return nullptr;
}
Json yes(Session&, const Json&) {
  return true;
}
Json no(Session&, const Json&) {
  return false;
}
Json inFront(Session&, const Json&) {
  return 4;
}

struct MobileCommand {
  std::string_view name;
  Json (*handle)(Session& session, const Json& parameters);
};

constexpr MobileCommand kMobileCommands[] = {
    {"tap", gestures::tap},
    {"clickGesture", gestures::tap},
    {"doubleTap", gestures::doubleTap},
    {"doubleClickGesture", gestures::doubleTap},
    {"touchAndHold", gestures::touchAndHold},
    {"longClickGesture", gestures::touchAndHold},
    {"dragFromToForDuration", gestures::dragFromTo},
    {"dragGesture", gestures::dragFromTo},
    {"swipe", gestures::swipe},
    {"swipeGesture", gestures::swipe},
    {"scroll", gestures::scroll},
    {"scrollGesture", gestures::scroll},
    {"flingGesture", gestures::swipe},
    {"pinch", gestures::pinch},
    {"pinchOpenGesture", gestures::pinchOpen},
    {"pinchCloseGesture", gestures::pinchClose},
    {"rotateElement", gestures::rotate},
    {"twoFingerTap", gestures::twoFingerTap},
    {"getContexts", detailedContexts},
    {"alert", alert},
    {"getDeviceTime", deviceTime},
    {"activateApp", nothing},
    {"queryAppState", inFront},
    {"isAppInstalled", yes},
    {"hideKeyboard", nothing},
    {"isKeyboardShown", no},
};

}  // namespace

Json runMobileCommand(Session& session, const std::string& name, const Json& parameters) {
  const auto* const row = std::ranges::find(kMobileCommands, name, &MobileCommand::name);
  if (row != std::end(kMobileCommands)) return row->handle(session, parameters);
  throw Error("unknown method", "there is no \"mobile: " + name + "\" here");
}

Json callChannel(Session& session, const Json& parameters) {
  return session.call(textIn(parameters, "method"), objectIn(parameters, "params"));
}

}  // namespace tarni::host::webdriver
