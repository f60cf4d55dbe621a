#include "host/http/Message.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace tarni::host::http {

Reply Reply::json(const Json& value, int status) {
  return {
      status, "application/json; charset=utf-8", compact(value), {{"Cache-Control", "no-cache"}}};
}

Reply Reply::events(NextEvent next) {
  return {200, "text/event-stream", "", {{"Cache-Control", "no-cache"}}, std::move(next)};
}

}  // namespace tarni::host::http
