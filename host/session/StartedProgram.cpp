#include "host/session/StartedProgram.h"

#include <unistd.h>

#include <algorithm>
#include <stdexcept>
#include <thread>

#include "host/launch/NetworkNamespace.h"
#include "host/launch/RunningProgram.h"
#include "host/wire/Ports.h"

namespace tarni::host {

using std::chrono::milliseconds;

namespace {

constexpr milliseconds kPause{20};

}  // namespace

StartedProgram::StartedProgram(const std::vector<std::string>& command,
                               const std::vector<std::string>& runOptions) {
  std::vector<std::string> words = {"run"};
  if (canEnterNetworkOfItsOwn()) {
    name_ = ProgramRegistry().freeName("play-" + std::to_string(getpid()));
    words.push_back("--isolated=" + name_);
  }
  words.insert(words.end(), runOptions.begin(), runOptions.end());
  words.emplace_back("--");
  words.insert(words.end(), command.begin(), command.end());
  process_.emplace(words);
}

void StartedProgram::awaitAgent(Deadline deadline) {
  while (!isServed()) {
    const bool isGone = hasEnded(Clock::now());
    if (isGone || Clock::now() >= deadline) {
      throw std::runtime_error(
          std::string(isGone ? "the program ended before the agent was ready"
                             : "the agent's ports did not open: was it loaded, and does the "
                               "program run its event loop?") +
          "; it said:\n" + lastOutput());
    }
    std::this_thread::sleep_for(kPause);
  }
  if (name_.empty()) return;
  const auto program = ProgramRegistry().find(name_);
  if (!program) throw std::runtime_error("the program ended at once; it said:\n" + lastOutput());
  joinNetworkOf(program->pid);
}

bool StartedProgram::isServed() const {
  std::string network = "self";
  if (!name_.empty()) {
    const auto program = ProgramRegistry().find(name_);
    if (!program) return false;
    network = std::to_string(program->pid);
  }
  return portUse(kPlaybackPort, network) == PortUse::Listening;
}

bool StartedProgram::endsBy(Deadline deadline) {
  process_->askToEnd();
  return process_->hasEnded(deadline);
}

bool StartedProgram::hasEnded(Deadline deadline) {
  return process_->hasEnded(deadline);
}

std::string StartedProgram::awaitSession(Deadline deadline) const {
  while (true) {
    const auto program = registered();
    const auto address = program ? ProgramRegistry().sessionOf(*program) : std::nullopt;
    if (address) return *address;
    if (Clock::now() >= deadline) {
      throw std::runtime_error("the program opens no session channel; it said:\n" + lastOutput());
    }
    std::this_thread::sleep_for(kPause);
  }
}

std::optional<RegisteredProgram> StartedProgram::registered() const {
  const ProgramRegistry registry;
  if (!name_.empty()) return registry.find(name_);
  const auto own = processesFrom(process_->pid());
  for (const auto& program : registry.all()) {
    if (std::ranges::find(own, program.pid, &ProcessSeen::pid) != own.end()) return program;
  }
  return std::nullopt;
}

}  // namespace tarni::host
