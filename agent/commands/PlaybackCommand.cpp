#include "agent/commands/PlaybackCommand.h"

#include "platform/ObjectiveC/Class.h"

namespace tarni {

PlaybackCommand::PlaybackCommand(const FunctionCallObject& call)
    : name(platform::lowercase(call.getFunctionName().text())),
      tagName(call.getTagName()),
      accessorType(platform::lowercase(call.getAccessorType().text())),
      accessorValue(call.getAccessorValue()),
      dataValue(call.getDataValue()) {}

}  // namespace tarni
