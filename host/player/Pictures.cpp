#include "host/player/Pictures.h"

#include <algorithm>
#include <chrono>

#include "host/session/Step.h"

namespace tarni::host {

namespace {

constexpr std::chrono::milliseconds kQuietEnough{30};
constexpr std::chrono::milliseconds kLongestUnrest{500};

Picture pictureOf(SessionClient& client, Json window) {
  window["blurSecrets"] = true;
  const Json answer = client.call("window.picture", std::move(window));
  const std::string format = textIn(answer, "format") == "jpeg" ? "jpeg" : "png";
  return {format, textIn(answer, "data"), std::max(numberIn(answer, "scale"), 0.1)};
}

}  // namespace

Picture pictureOfWindow(SessionClient& client, const Json& element) {
  if (!element.is_null()) {
    try {
      return pictureOf(client, {{"window", element}});
    } catch (const RequestError&) {
      // it is gone
    }
  }
  try {
    return pictureOf(client, Json::object());
  } catch (const RequestError&) {
    return {};
  }
}

bool comesToRest(SessionClient& client) {
  try {
    client.call("wait.rest", {{"quiet", kQuietEnough.count()}}, kLongestUnrest);
    return true;
  } catch (const RequestError&) {
    return false;
  }
}

}  // namespace tarni::host
