#include "agent/TcpCommunication/PlaybackExecutor.h"

#include <nlohmann/json.hpp>

#include "agent/TcpCommunication/BaseManager/UTF8.h"
#include "agent/diagnostics/Screenshots.h"
#include "agent/elements/UIViewFinder.h"
#include "agent/elements/Utilities.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Foundation/NSLog.h"

namespace tarni {

using nlohmann::ordered_json;
using platform::Task;

namespace {

constexpr std::string_view kGreeting = "Welcome PlayBackServer Started Successfully";

void logMessage(std::string_view message) {
  if (!isUTF8(std::string(message))) {
    platform::NSLog("A playback command of %zu bytes is not UTF-8", message.size());
    return;
  }
  while (message.ends_with('\n') || message.ends_with('\r')) message.remove_suffix(1);
  platform::NSLog("Msg is %s", std::string(message).c_str());
}

// Runs the command in the web page and on the native views; the native answer goes first.
Task<std::string> answerTo(std::string message) {
  const auto dictionary = Utilities::convertStringToMutableDictionary(message);
  const FunctionCallObject call = Utilities::createFunctionCallObject(dictionary);
  const UIViewFinder finder;
  const std::optional<std::string> webText =
      co_await finder.parseFunctionCallObjectForWebView(call);
  const ordered_json entries = co_await finder.parseFunctionCallObject(call);
  if (entries.empty() && webText) co_return *webText;
  co_return Utilities::convertNSArrayToString(entries).value_or("[]");
}

std::string exceptionAnswer(const std::string& reason) {
  ordered_json entry;
  entry["exceptionmsg"] = reason;
  const ordered_json entries = ordered_json::array({std::move(entry)});
  return Utilities::convertNSArrayToString(entries).value_or("[]");
}

}  // namespace

Task<std::optional<std::string>> PlaybackExecutor::execute(std::string message) {
  logMessage(message);
  if (message == kGreeting) co_return std::nullopt;
  std::string reason;
  try {
    co_return co_await answerTo(message);
  } catch (...) {
    reason = platform::reasonOf();
  }
  co_await Diagnostics::recordFailure("exceptionmsg", reason + '\n' + message);
  co_return exceptionAnswer(reason);
}

}  // namespace tarni
