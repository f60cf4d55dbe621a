#include "host/session/StartedProgram.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <thread>

#include "host/launch/NetworkNamespace.h"
#include "host/launch/ProgramRegistry.h"
#include "host/wire/Ports.h"

namespace tarni::host {

using std::chrono::milliseconds;

namespace {

constexpr milliseconds kPause{20};
constexpr std::chrono::seconds kTimeToEnd{5};

// Tried in a child, as it cannot be undone.
bool canHaveItsOwnNetwork() {
  const pid_t pid = fork();
  if (pid == 0) {
    try {
      enterNetworkOfItsOwn();
      _exit(0);
    } catch (const std::exception&) {
      _exit(1);
    }
  }
  int status = 1;
  if (pid > 0) waitpid(pid, &status, 0);
  return status == 0;
}

[[noreturn]] void become(std::vector<std::string>& command, int output) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  setpgid(0, 0);  // Ctrl-C is this tool's own affair
  const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
  dup2(nothing, STDIN_FILENO);
  dup2(output, STDOUT_FILENO);
  dup2(output, STDERR_FILENO);
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (auto& word : command) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  execv("/proc/self/exe", arguments.data());
  _exit(127);
}

}  // namespace

StartedProgram::StartedProgram(const std::vector<std::string>& command,
                               const std::vector<std::string>& runOptions)
    : output_(memfd_create("output", MFD_CLOEXEC)) {
  std::vector<std::string> words = {"tarni", "run"};
  if (canHaveItsOwnNetwork()) {
    name_ = ProgramRegistry().freeName("play-" + std::to_string(getpid()));
    words.push_back("--isolated=" + name_);
  }
  words.insert(words.end(), runOptions.begin(), runOptions.end());
  words.emplace_back("--");
  words.insert(words.end(), command.begin(), command.end());
  // Each writer of the one file goes on where the other stopped.
  fcntl(output_, F_SETFL, O_APPEND);
  pid_ = fork();
  if (pid_ < 0) throw std::runtime_error("cannot start another process");
  if (pid_ == 0) become(words, output_);
}

StartedProgram::~StartedProgram() {
  if (!hasEnded(Clock::now())) {
    kill(pid_, SIGTERM);
    if (!hasEnded(Clock::now() + kTimeToEnd)) {
      kill(-pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
  }
  close(output_);
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

bool StartedProgram::hasEnded(Deadline deadline) {
  while (!isOver_) {
    isOver_ = waitpid(pid_, nullptr, WNOHANG) == pid_;
    if (isOver_ || Clock::now() >= deadline) break;
    std::this_thread::sleep_for(kPause);
  }
  return isOver_;
}

std::string StartedProgram::lastOutput() const {
  constexpr off_t kEnough = 2000;
  const auto size = lseek(output_, 0, SEEK_END);
  std::string text(static_cast<std::size_t>(std::min(size, kEnough)), '\0');
  const auto count = pread(output_, text.data(), text.size(), std::max<off_t>(size - kEnough, 0));
  text.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return text;
}

}  // namespace tarni::host
