#include "agent/TcpCommunication/BaseManager/RecorderCommands.h"

#include <charconv>
#include <limits>
#include <string_view>
#include <system_error>

#include "agent/WebView/WebView.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/core/state/Utilities_Json.h"
#include "agent/core/state/Utilities_Messages.h"
#include "agent/elements/UIViewStorage.h"
#include "agent/elements/UIView_Highlight.h"
#include "platform/Foundation/Lowercase.h"
#include "platform/Foundation/NSException.h"
#include "platform/Foundation/NSLog.h"

namespace tarni::RecorderCommands {
namespace {

// The number that the text begins with, 0 without one; the nearest that fits for one out of range.
int integerValue(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t\n\v\f\r");
  if (begin == std::string_view::npos) return 0;
  text.remove_prefix(begin);
  if (text.starts_with("+-")) return 0;  // one sign is all that a number has
  if (text.starts_with('+')) text.remove_prefix(1);
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc::result_out_of_range) return value;
  using Limits = std::numeric_limits<int>;
  return text.starts_with('-') ? Limits::min() : Limits::max();
}

// The piece between the first "=" and the next.
std::string_view secondPiece(std::string_view message) {
  const std::size_t separator = message.find('=');
  if (separator == std::string_view::npos) {
    throw platform::NSException(platform::NSRangeException,
                                "\"highlight\" comes without \"=\" and an index");
  }
  const std::string_view behind = message.substr(separator + 1);
  return behind.substr(0, behind.find('='));
}

platform::Task<void> switchToSpy() {
  platform::NSLog("Switching to spy");
  GlobalVars::sharedInstance().set_spyMode("true");
  WebView webView;
  co_await webView.switchToSpyMode();
  Utilities::ShowToastMessage("Switched to Spy Mode");
}

platform::Task<void> switchToRecorder() {
  platform::NSLog("Switching to recorder");
  GlobalVars::sharedInstance().set_spyMode("false");
  WebView webView;
  co_await webView.switchToRecorderMode();
  Utilities::ShowToastMessage("Switched to Recording Mode");
}

void highlight(const std::string& message) {
  platform::NSLog("HIGHLIGHTING in Spy: '%s' ", message.c_str());
  const long fromNewest = integerValue(secondPiece(message));
  UIViewStorage& storage = UIViewStorage::sharedObject();
  const auto count = static_cast<long>(storage._viewsStorageWithIdentifier().size());
  const long index = count - fromNewest - 1;
  platform::NSLog("elementIndexToHighlight '%ld', and _viewSotrageSize '%ld' ", index, count);
  if (index < 0 || index >= count) {
    throw platform::NSException(platform::NSRangeException,
                                "No spied element has the index " + std::to_string(index));
  }
  if (const platform::UIViewRef view = storage.viewAtIndex(index)) {
    Highlight::highlightView(view);
  } else {
    platform::NSLog("The spied element %ld has gone", index);
  }
  storage.setCount(0);
}

}  // namespace

platform::Task<void> handle(std::string message) {
  if (!isUTF8(message)) co_return;
  platform::NSLog("Recorder thread message is '%s'", message.c_str());
  const std::string lower = platform::lowercaseString(message);
  const auto contains = [&lower](const char* command) {
    return lower.find(command) != std::string::npos;
  };
  if (contains("startobjectspy")) {
    co_await switchToSpy();
  } else if (contains("stopobjectspy")) {
    co_await switchToRecorder();
  } else if (contains("highlight")) {
    highlight(message);
  } else {
    // Kept: an unknown command has always been told to the log in these words.
    platform::NSLog("Error converting received data into UTF-8 String");
  }
}

}  // namespace tarni::RecorderCommands
