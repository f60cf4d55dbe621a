// PlaybackCommand: the fields of a playback command as the command tables use them. A field that
// the command lacks is empty. Plain value.
#pragma once

#include <string>

#include "agent/TcpCommunication/FunctionCallObject.h"

namespace tarni {

struct PlaybackCommand {
  explicit PlaybackCommand(const FunctionCallObject& call);

  std::string name;  // in lower case
  std::string tagName;
  std::string accessorType;  // in lower case
  std::string accessorValue;
  std::string dataValue;
};

}  // namespace tarni
