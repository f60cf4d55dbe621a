// PlaybackCommand: the fields of a playback command as the command tables use them: the two that
// every row compares, and those that are for the rows that use them. Plain value.
#pragma once

#include <string>

#include "agent/commands/FunctionCallObject.h"

namespace tarni {

struct PlaybackCommand {
  // Throws NSException when the name or the accessor type is no text.
  explicit PlaybackCommand(const FunctionCallObject& call);

  std::string name;  // in lower case
  CommandField tagName;
  std::string accessorType;  // in lower case
  CommandField accessorValue;
  CommandField dataValue;
};

}  // namespace tarni
