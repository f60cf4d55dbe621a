#include "tests/support/SessionWire.h"

#include <cstdlib>
#include <stdexcept>

namespace tarni::test {

using nlohmann::json;

SessionFolder::SessionFolder() {
  char path[] = "/tmp/tarni-session-XXXXXX";
  if (!mkdtemp(path)) throw std::runtime_error("no folder for the session channel");
  path_ = path;
}

SessionFolder::~SessionFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void SessionWire::send(const std::string& method, const json& parameters, int id) const {
  const json request{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", parameters}};
  sendLine(request.dump());
}

json SessionWire::ask(const std::string& method, const json& parameters) const {
  send(method, parameters, 1);
  json answered = answer();
  for (; !answered.contains("id"); answered = answer()) told_.push_back(answered["params"]);
  if (!answered.contains("result")) throw std::runtime_error(method + ": " + answered.dump());
  return answered["result"];
}

}  // namespace tarni::test
