#include "agent/commands/FunctionCallObject.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "agent/core/state/GlobalVars.h"
#include "platform/Foundation/Lowercase.h"

namespace tarni {

using nlohmann::ordered_json;

namespace {

CommandField fieldOfKey(const ordered_json& command, std::string_view key) {
  const auto found = command.find(std::string(key));
  if (found == command.end() || found->is_null()) return {};
  if (!found->is_string()) return CommandField::thatIsNoText(std::string(key));
  return CommandField(found->get<std::string>());
}

}  // namespace

FunctionCallObject::FunctionCallObject(Fields fields)
    : fields_(std::move(fields)),
      functionName_(platform::lowercaseString(fields_[0].text())),
      accessorType_(platform::lowercaseString(fields_[2].text())) {}

// A command ends recording for good: from here on the polling hook walks no windows and the event
// hook makes no steps. The server has closed the recorder's connection already
// (ServerManager::handlePlaybackCommandOnMain).
FunctionCallObject Utilities::createFunctionCallObject(const std::optional<ordered_json>& command) {
  GlobalVars::sharedInstance().set_isPlaybackStarted("true");
  FunctionCallObject::Fields fields;
  for (std::size_t index = 0; command && index < fields.size(); ++index) {
    fields[index] = fieldOfKey(*command, FunctionCallObject::kKeys[index]);
  }
  return FunctionCallObject(std::move(fields));
}

}  // namespace tarni
