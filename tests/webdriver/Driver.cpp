#include "tests/webdriver/Driver.h"

#include <signal.h>
#include <sys/wait.h>

#include <stdexcept>

namespace tarni::test {

namespace {

std::vector<std::string> commandLine(const std::vector<std::string>& options) {
  std::vector<std::string> line = {built("bin/tarni"), "webdriver", "--port", "0"};
  line.insert(line.end(), options.begin(), options.end());
  return line;
}

}  // namespace

DriverServer::DriverServer(const std::vector<std::string>& options,
                           const Program::Environment& environment)
    : program_(commandLine(options), environment) {
  eventually([this] { return program_.output().ends_with('\n'); });
  const std::string said = program_.output();
  port_ = std::stoi(said.substr(said.rfind(':') + 1));
}

DriverClient::DriverClient(int port) : client_("127.0.0.1", port) {
  client_.set_read_timeout(kPatience);
  client_.set_keep_alive(true);
  client_.set_tcp_nodelay(true);
}

Answer DriverClient::ask(const std::string& method, const std::string& path,
                         const std::string& body) {
  const auto result = method == "GET"      ? client_.Get(path)
                      : method == "DELETE" ? client_.Delete(path)
                                           : client_.Post(path, body, "application/json");
  if (!result) throw std::runtime_error("no answer to " + method + " " + path);
  return {result->status, nlohmann::json::parse(result->body).at("value")};
}

Answer DriverClient::newSession(const nlohmann::json& capabilities) {
  const nlohmann::json body = {{"capabilities", {{"alwaysMatch", capabilities}}}};
  auto answer = ask("POST", "/session", body.dump());
  if (answer.status != 200) throw std::runtime_error(answer.value.dump());
  session_ = answer.value["sessionId"];
  return answer;
}

Answer DriverClient::inSession(const std::string& method, const std::string& path,
                               const std::string& body) {
  return ask(method, "/session/" + session_ + path, body);
}

std::string DriverClient::element(const std::string& strategy, const std::string& value) {
  const nlohmann::json body = {{"using", strategy}, {"value", value}};
  const auto answer = inSession("POST", "/element", body.dump());
  if (answer.status != 200) throw std::runtime_error(answer.value.dump());
  return answer.value.begin().value();
}

bool isAlive(const nlohmann::json& process) {
  const auto pid = process.get<pid_t>();
  // What outlives the server is a child of this process, which has to take note of its end.
  waitpid(pid, nullptr, WNOHANG);
  return kill(pid, 0) == 0;
}

}  // namespace tarni::test
