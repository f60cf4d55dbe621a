#include "agent/elements/Utilities.h"

#include <iomanip>
#include <locale>
#include <nlohmann/json.hpp>
#include <sstream>

#include "agent/core/state/DictionaryReader.h"
#include "agent/core/state/GlobalVars.h"
#include "platform/Platform.h"

namespace tarni {

using nlohmann::ordered_json;

namespace {

std::optional<std::string> compactText(const ordered_json& value) {
  if (!value.is_structured()) return std::nullopt;
  return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

CommandField fieldOfKey(const ordered_json& command, const char* key) {
  const auto found = command.find(key);
  if (found == command.end() || found->is_null()) return {};
  if (!found->is_string()) return CommandField::thatIsNoText(key);
  return CommandField(found->get<std::string>());
}

constexpr double kToastSeconds = 5.0;

}  // namespace

std::optional<std::string> Utilities::convertNSArrayToString(const ordered_json& array) {
  return compactText(array);
}

std::optional<std::string> Utilities::convertMutableDictionaryToString(
    const ordered_json& dictionary) {
  return compactText(dictionary);
}

std::optional<ordered_json> Utilities::convertStringToNSArray(std::string_view text) {
  ordered_json value = ordered_json::parse(text, nullptr, false);
  if (!value.is_array()) return std::nullopt;
  return value;
}

std::optional<ordered_json> Utilities::convertStringToMutableDictionary(
    std::string_view text, std::span<const std::string_view> keys) {
  return DictionaryReader::read(text, keys);
}

std::string Utilities::getGUIDString() {
  return platform::current().encoding->UUIDString();
}

std::string Utilities::decimalText(double value, int decimals) {
  // Not `to_chars`, which the oldest supported systems lack for fractions.
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << std::fixed << std::setprecision(decimals) << value;
  return text.str();
}

FunctionCallObject Utilities::createFunctionCallObject(const std::optional<ordered_json>& command) {
  GlobalVars::sharedInstance().set_isPlaybackStarted("true");
  FunctionCallObject call;
  if (!command) return call;
  call.setFunctionName(fieldOfKey(*command, "functionname"));
  call.setTagName(fieldOfKey(*command, "tagname"));
  call.setAccessorType(fieldOfKey(*command, "accessortype"));
  call.setAccessorValue(fieldOfKey(*command, "accessorvalue"));
  call.setDataValue(fieldOfKey(*command, "datavalue"));
  call.setFunctionType(fieldOfKey(*command, "functiontype"));
  call.setFunctionResultType(fieldOfKey(*command, "functionresulttype"));
  return call;
}

void Utilities::ShowToastMessage(std::string text) {
  platform::current().dispatch->mainQueue().async([text = std::move(text)] {
    const platform::Platform& platform = platform::current();
    const auto alert = platform.alerts->show(text, std::nullopt, std::nullopt);
    platform.dispatch->afterOnMain(kToastSeconds, [alert] { dismissAlert(alert); });
  });
}

void Utilities::ShowAlertMessage(std::string text) {
  platform::current().dispatch->mainQueue().async([text = std::move(text)] {
    dismissAlert(platform::current().alerts->show(text, "Cancel", "Ok"));
  });
}

void Utilities::dismissAlert(const std::shared_ptr<platform::UIAlertView>& alert) {
  if (alert) alert->dismissWithClickedButtonIndex(0, true);
}

}  // namespace tarni
