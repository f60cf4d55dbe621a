#include "agent/session/protocol/Result.h"

#include <algorithm>

namespace tarni::session {

std::string jsonText(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

bool Result::isShort() const {
  constexpr std::size_t kShort = 4096;
  std::size_t size = 0;
  for (const auto& [name, member] : written) size += member.size();
  const auto isLong = [](const Json& member) { return member.is_string() || member.is_array(); };
  return !finish && size < kShort && std::ranges::none_of(value, isLong);
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
