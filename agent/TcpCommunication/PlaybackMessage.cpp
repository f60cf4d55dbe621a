#include "agent/TcpCommunication/PlaybackMessage.h"

#include <utility>

#include "agent/commands/FunctionCallObject.h"
#include "agent/core/state/Utilities_Json.h"

namespace tarni {

PlaybackMessage::PlaybackMessage(std::string bytes)
    : text(std::move(bytes)),
      isUTF8(tarni::isUTF8(text)),
      dictionary(Utilities::convertStringToMutableDictionary(text, FunctionCallObject::kKeys)) {}

}  // namespace tarni
