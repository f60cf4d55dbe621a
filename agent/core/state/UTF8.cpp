#include "agent/core/state/UTF8.h"

#include <nlohmann/json.hpp>

namespace tarni {

bool isUTF8(const std::string& bytes) {
  try {
    static_cast<void>(nlohmann::json(bytes).dump());
    return true;
  } catch (const nlohmann::json::type_error&) {
    return false;
  }
}

}  // namespace tarni
