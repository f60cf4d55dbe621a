#include "agent/session/Result.h"

namespace tarni::session {

std::string jsonText(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string Result::text() const {
  Json members = value;
  if (finish) finish(members);
  std::string all = jsonText(members);
  for (const auto& [name, member] : written) {
    all.pop_back();
    if (all.size() > 1) all += ',';
    all.append(jsonText(name)).append(":").append(member).append("}");
  }
  return all;
}

}  // namespace tarni::session
