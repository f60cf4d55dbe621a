#include "host/http/Client.h"

#include <httplib.h>

#include <stdexcept>

namespace tarni::host::http {

namespace {

constexpr int kSecondsToConnect = 5;
constexpr int kSecondsToAnswer = 15;

}  // namespace

Reply ask(const std::string& url, const std::string& path, const std::string& body) {
  httplib::Client client(url);
  client.set_connection_timeout(kSecondsToConnect);
  client.set_read_timeout(kSecondsToAnswer);
  const auto answer = body.empty() ? client.Get(path) : client.Post(path, body, "application/json");
  if (!answer) throw std::runtime_error("nothing answers at " + url);
  return {answer->status, answer->get_header_value("Content-Type"), answer->body};
}

}  // namespace tarni::host::http
