// ChromiumPage: a page in a browser without a window (chromium-headless-shell), asked over the
// pipes of its debugging protocol: an engine behind web views that have none. It lives as long as
// the process.
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

namespace tarni::test {

class ChromiumPage {
 public:
  // On the thread of the pipe.
  using Answered = std::function<void(nlohmann::json result)>;

  // Shows that address in a window of that size. Throws when the browser does not come up.
  ChromiumPage(const std::string& address, int width, int height);
  ChromiumPage(const ChromiumPage&) = delete;

  bool isLoading() const { return isLoading_; }
  // True once a script has looked for elements.
  bool isSearched() const { return isSearched_; }
  // The answer of Runtime.evaluate: "result" and, for what throws, "exceptionDetails".
  void evaluate(const std::string& script, Answered answered);
  // Waits for it: the text of what came, which is empty when nothing did.
  std::string evaluateAtOnce(const std::string& script);
  void tap(double x, double y);

 private:
  void send(const std::string& method, nlohmann::json parameters, Answered answered);
  // Waits for the answer; not from the pipe's own thread.
  nlohmann::json ask(const std::string& method, nlohmann::json parameters);
  [[noreturn]] void readAll();
  void take(const nlohmann::json& message);

  int to_ = -1;
  int from_ = -1;
  std::string session_;
  std::atomic<bool> isLoading_ = true;
  std::atomic<bool> isSearched_ = false;
  std::mutex mutex_;
  int lastNumber_ = 0;
  std::map<int, Answered> open_;
};

}  // namespace tarni::test
