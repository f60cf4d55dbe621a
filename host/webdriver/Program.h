// Program: what a session drives. Either started for it, in a network, on a display and with
// folders of its own, all of which end with it; or one that runs, which is left as it is. `end` and
// `lastOutput` and its time may be asked for on any thread, all else on one at a time.
#pragma once

#include <memory>
#include <mutex>
#include <stop_token>
#include <string>

#include "host/launch/ToolProcess.h"
#include "host/session_client/SessionClient.h"
#include "host/webdriver/Capabilities.h"
#include "host/webdriver/Starter.h"

namespace tarni::host::webdriver {

class Program {
 public:
  // Starts it and waits for its session channel and its first window, or until it is asked to stop.
  // Throws Error ("session not created"), with what the program said; nothing of it is left behind
  // then.
  Program(const Capabilities& wanted, const std::string& sessionId, Starter& starter,
          const std::stop_token& stop);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program();

  SessionClient& client() { return *client_; }
  // What it printed last, and when, in milliseconds since 1970; "" and 0 of one that was not
  // started here.
  std::string lastOutput();
  long lastOutputTime();
  // Ends a program that was started here, and all that was made for it. What it is asked meanwhile
  // ends with a WireError.
  void end();

 private:
  void start(const Capabilities& wanted, const std::string& sessionId, Starter& starter);
  void connect(const std::string& address);
  std::string awaitChannel(const std::string& name);
  bool hasEnded();
  void awaitWindow();

  std::mutex mutex_;
  bool isOver_ = false;
  std::unique_ptr<ToolProcess> process_;
  std::unique_ptr<SessionClient> client_;
};

}  // namespace tarni::host::webdriver
