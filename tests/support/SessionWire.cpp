#include "tests/support/SessionWire.h"

#include <stdexcept>

namespace tarni::test {

using nlohmann::json;

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

json SessionWire::find(json selector) const {
  selector["all"] = false;
  return ask("element.find", selector)["elements"][0];
}

void SessionWire::await(const json& condition, int milliseconds) const {
  ask("wait.for", {{"conditions", json::array({condition})}, {"timeout", milliseconds}});
}

}  // namespace tarni::test
