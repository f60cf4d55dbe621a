#include "tests/conformance/ChromiumPage.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <future>
#include <stdexcept>
#include <thread>
#include <utility>

namespace tarni::test {

using nlohmann::json;

namespace {

// The descriptors that the protocol has its pipes at.
constexpr int kBrowserReads = 3;
constexpr int kBrowserWrites = 4;

[[noreturn]] void runBrowser(int reads, int writes, const std::string& size) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  // Beyond both numbers first, so that neither is overwritten.
  constexpr int kFree = 10;
  const int in = fcntl(reads, F_DUPFD, kFree);
  const int out = fcntl(writes, F_DUPFD, kFree);
  dup2(in, kBrowserReads);
  dup2(out, kBrowserWrites);
  execlp("chromium-headless-shell", "chromium-headless-shell", "--remote-debugging-pipe",
         "--no-sandbox", "--disable-gpu", "--log-level=3", size.c_str(), "about:blank",
         static_cast<char*>(nullptr));
  _exit(127);
}

}  // namespace

ChromiumPage::ChromiumPage(const std::string& address, int width, int height) {
  std::array<int, 2> there{};
  std::array<int, 2> back{};
  if (pipe2(there.data(), O_CLOEXEC) != 0 || pipe2(back.data(), O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipes");
  }
  const std::string size = "--window-size=" + std::to_string(width) + "," + std::to_string(height);
  if (fork() == 0) runBrowser(there[0], back[1], size);
  close(there[0]);
  close(back[1]);
  to_ = there[1];
  from_ = back[0];
  std::thread([this] { readAll(); }).detach();
  const json targets = ask("Target.getTargets", json::object());
  for (const json& target : targets.at("targetInfos")) {
    if (target["type"] != "page") continue;
    const json attached =
        ask("Target.attachToTarget", {{"targetId", target["targetId"]}, {"flatten", true}});
    session_ = attached.at("sessionId");
  }
  ask("Page.enable", json::object());
  ask("Page.navigate", {{"url", address}});
}

void ChromiumPage::evaluate(const std::string& script, Answered answered) {
  if (script.starts_with("findElements")) isSearched_ = true;
  send("Runtime.evaluate", {{"expression", script}, {"returnByValue", true}}, std::move(answered));
}

std::string ChromiumPage::evaluateAtOnce(const std::string& script) {
  std::promise<json> answer;
  evaluate(script, [&answer](json told) { answer.set_value(std::move(told)); });
  const json told = answer.get_future().get();
  const json value = told.value("result", json::object())["value"];
  if (value.is_null()) return "";
  return value.is_string() ? value.get<std::string>() : value.dump();
}

void ChromiumPage::tap(double x, double y) {
  for (const char* type : {"mousePressed", "mouseReleased"}) {
    const json event = {{"type", type}, {"x", x}, {"y", y}, {"button", "left"}, {"clickCount", 1}};
    send("Input.dispatchMouseEvent", event, [](const json&) {});
  }
}

void ChromiumPage::send(const std::string& method, json parameters, Answered answered) {
  const std::lock_guard lock(mutex_);
  const int number = ++lastNumber_;
  open_.emplace(number, std::move(answered));
  json message = {{"id", number}, {"method", method}, {"params", std::move(parameters)}};
  if (!session_.empty()) message["sessionId"] = session_;
  const std::string text = message.dump() + '\0';
  for (std::size_t sent = 0; sent < text.size();) {
    const auto count = write(to_, text.data() + sent, text.size() - sent);
    if (count <= 0) return;
    sent += static_cast<std::size_t>(count);
  }
}

json ChromiumPage::ask(const std::string& method, json parameters) {
  auto answer = std::make_shared<std::promise<json>>();
  send(method, std::move(parameters),
       [answer](json result) { answer->set_value(std::move(result)); });
  auto future = answer->get_future();
  if (future.wait_for(std::chrono::seconds(30)) != std::future_status::ready) {
    throw std::runtime_error("the browser does not answer " + method);
  }
  return future.get();
}

void ChromiumPage::readAll() {
  std::string text;
  std::array<char, 65536> buffer{};
  for (ssize_t count = 0; (count = read(from_, buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(count));
    std::size_t begin = 0;
    for (auto end = text.find('\0'); end != text.npos; end = text.find('\0', begin)) {
      take(json::parse(text.substr(begin, end - begin)));
      begin = end + 1;
    }
    text.erase(0, begin);
  }
  // The browser has gone, and nothing more is to be seen here.
  std::_Exit(1);
}

void ChromiumPage::take(const json& message) {
  const std::string method = message.value("method", "");
  if (method == "Page.frameStartedLoading") isLoading_ = true;
  if (method == "Page.loadEventFired") isLoading_ = false;
  if (!message.contains("id")) return;
  Answered answered;
  {
    const std::lock_guard lock(mutex_);
    const auto open = open_.find(message["id"].get<int>());
    if (open == open_.end()) return;
    answered = std::move(open->second);
    open_.erase(open);
  }
  answered(message.value("result", json::object()));
}

}  // namespace tarni::test
