#include "host/http/Message.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace tarni::host::http {

Reply Reply::json(const Json& value, int status) {
  return written(compact(value), status);
}

Reply Reply::written(std::string json, int status) {
  return {
      status, "application/json; charset=utf-8", std::move(json), {{"Cache-Control", "no-cache"}}};
}

Reply Reply::events(NextEvent next) {
  return {200, "text/event-stream", "", {{"Cache-Control", "no-cache"}}, std::move(next)};
}

}  // namespace tarni::host::http
