#include "host/webdriver/Program.h"

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>
#include <thread>
#include <vector>

#include "host/launch/NetworkNamespace.h"
#include "host/launch/ProgramRegistry.h"
#include "host/launch/RunningProgram.h"
#include "host/webdriver/Error.h"
#include "host/wire/WireError.h"

namespace tarni::host::webdriver {

using std::chrono::milliseconds;

namespace {

constexpr std::chrono::seconds kTimeToStart{30};
constexpr milliseconds kTimeToShowAWindow{10'000};
constexpr milliseconds kTimeToShowOtherwise{5'000};
constexpr milliseconds kTimeToConnect{3'000};
constexpr milliseconds kPauseBetweenTries{5};
// What `tarni run` says when it is of little use to wait: a program may have its agent built in.
constexpr const char* kOtherToolkit = "uses another toolkit than Qt";
constexpr const char* kEndedEarly = "the session was ended while it began";

[[noreturn]] void fail(const std::string& why) {
  throw Error("session not created", why);
}

// The words of `tarni run` for it. The program's variables are set by `env`, as some of them mean
// something else to the tool.
std::vector<std::string> runLine(const Capabilities& wanted, const std::string& name) {
  std::vector<std::string> words = {"run", "--isolated=" + name};
  auto environment = wanted.environment;
  if (wanted.display.starts_with(':')) {
    environment["DISPLAY"] = wanted.display;
  } else if (wanted.display != "none") {
    words.push_back("--display=" + wanted.display);
  }
  if (!wanted.keepsState) words.emplace_back("--fresh");
  words.emplace_back("--");
  if (!environment.empty()) words.emplace_back("env");
  for (const auto& [variable, value] : environment) words.push_back(variable + "=" + value);
  words.insert(words.end(), wanted.command.begin(), wanted.command.end());
  return words;
}

std::string channelOf(const std::string& program) {
  if (program.starts_with("tcp:") || program.starts_with('/')) return program;
  const ProgramRegistry registry;
  const auto found = registry.findByNameOrProcess(program);
  const auto address = found ? registry.sessionOf(*found) : std::nullopt;
  if (!address)
    fail("no program " + program + " runs here with a session channel: see `tarni list`");
  return *address;
}

}  // namespace

Program::Program(const Capabilities& wanted, const std::string& sessionId, Starter& starter,
                 const std::stop_token& stop) {
  const std::stop_callback endsEarly(stop, [this] { end(); });
  try {
    if (wanted.attach.empty()) {
      start(wanted, sessionId, starter);
    } else {
      connect(channelOf(wanted.attach));
    }
    awaitWindow();
  } catch (const Error&) {
    end();
    throw;
  } catch (const std::exception& error) {
    const auto said = lastOutput();
    end();
    fail(error.what() + (said.empty() ? "" : "; it said:\n" + said));
  }
}

Program::~Program() {
  end();
}

void Program::start(const Capabilities& wanted, const std::string& sessionId, Starter& starter) {
  requireProgram(wanted.command.front());
  if (const auto why = whyOutOfReach(wanted.command.front()); !why.empty()) fail(why);
  const auto name = "webdriver-" + sessionId;
  auto process = starter.start(runLine(wanted, name));
  {
    const std::lock_guard lock(mutex_);
    if (!isOver_) process_ = std::move(process);
  }
  connect(awaitChannel(name));
}

void Program::connect(const std::string& address) {
  auto client = std::make_unique<SessionClient>(address, kTimeToConnect);
  const std::lock_guard lock(mutex_);
  if (isOver_) fail(kEndedEarly);
  client_ = std::move(client);
}

std::string Program::awaitChannel(const std::string& name) {
  const ProgramRegistry registry;
  const auto start = Clock::now();
  auto deadline = start + kTimeToStart;
  while (true) {
    const auto program = registry.find(name);
    if (const auto address = program ? registry.sessionOf(*program) : std::nullopt) return *address;
    const bool isGone = hasEnded();
    const auto said = lastOutput();
    if (said.find(kOtherToolkit) != std::string::npos) {
      deadline = std::min(deadline, start + kTimeToShowOtherwise);
    }
    if (isGone || Clock::now() >= deadline) {
      fail((isGone ? std::string("the program ended before the agent was ready")
                   : std::string("the program does not open its session channel: does it use "
                                 "Qt, and does it run its event loop?")) +
           "; it said:\n" + said);
    }
    std::this_thread::sleep_for(kPauseBetweenTries);
  }
}

bool Program::hasEnded() {
  const std::lock_guard lock(mutex_);
  if (isOver_) fail(kEndedEarly);
  return process_->hasEnded({});
}

// A program that works without one is driven all the same.
void Program::awaitWindow() {
  const Json condition = {{"find", {{"kind", "UIWindow"}}}, {"is", "there"}};
  try {
    client_->call("wait.for", {{"conditions", Json::array({condition})}}, kTimeToShowAWindow);
  } catch (const RequestError&) {
  }
}

std::string Program::lastOutput() {
  const std::lock_guard lock(mutex_);
  return process_ ? process_->lastOutput() : "";
}

long Program::lastOutputTime() {
  const std::lock_guard lock(mutex_);
  return process_ ? process_->lastOutputTime() : 0;
}

void Program::end() {
  const std::lock_guard lock(mutex_);
  isOver_ = true;
  if (client_) client_->hangUp();
  process_.reset();
}

}  // namespace tarni::host::webdriver
