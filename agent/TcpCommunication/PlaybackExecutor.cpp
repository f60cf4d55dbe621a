#include "agent/TcpCommunication/PlaybackExecutor.h"

#include <nlohmann/json.hpp>

#include "agent/commands/FunctionCallObject.h"
#include "agent/commands/NativeCommands.h"
#include "agent/commands/WebViewCommands.h"
#include "agent/core/state/Utilities_Json.h"
#include "agent/diagnostics/Screenshots.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Foundation/NSLog.h"

namespace tarni {

using nlohmann::ordered_json;
using platform::Task;

namespace {

constexpr std::string_view kGreeting = "Welcome PlayBackServer Started Successfully";
// The log cuts longer lines.
constexpr std::size_t kLongestLine = 64UL * 1024;

void logMessage(const PlaybackMessage& message) {
  const std::string_view text = message.isUTF8 ? message.text : std::string_view("(null)");
  platform::NSLog("Msg is %s", std::string(text.substr(0, kLongestLine)).c_str());
}

// Runs the command in the web page and on the native views; the native answer goes first.
Task<std::string> answerTo(const PlaybackMessage& message) {
  const FunctionCallObject call = Utilities::createFunctionCallObject(message.dictionary);
  const std::optional<std::string> webText =
      co_await UIViewFinder::parseFunctionCallObjectForWebView(call);
  const ordered_json entries = co_await UIViewFinder::parseFunctionCallObject(call);
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

Task<std::optional<std::string>> PlaybackExecutor::execute(PlaybackMessage message) {
  logMessage(message);
  // Kept: the greeting that comes back is not answered, and nothing is read after it.
  if (message.text == kGreeting) co_return std::nullopt;
  std::string reason;
  try {
    co_return co_await answerTo(message);
  } catch (...) {
    reason = platform::reasonOf();
  }
  co_await Diagnostics::recordFailure("exceptionmsg", reason + '\n' + message.text);
  co_return exceptionAnswer(reason);
}

}  // namespace tarni
