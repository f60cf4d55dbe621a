#include "agent/elements/PlaybackCommand.h"

#include "platform/ObjectiveC/Class.h"

namespace tarni {

PlaybackCommand::PlaybackCommand(const FunctionCallObject& call)
    : name(platform::lowercase(call.getFunctionName().value_or(""))),
      tagName(call.getTagName().value_or("")),
      accessorType(platform::lowercase(call.getAccessorType().value_or(""))),
      accessorValue(call.getAccessorValue().value_or("")),
      dataValue(call.getDataValue().value_or("")) {}

}  // namespace tarni
