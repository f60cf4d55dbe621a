#include "host/launch/ProgramLauncher.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "host/launch/NetworkNamespace.h"
#include "host/launch/Reaper.h"

namespace tarni::host {

namespace fs = std::filesystem;

namespace {

constexpr std::array kForwarded = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGUSR1, SIGUSR2};
constexpr timespec kTick = {0, 20'000'000};

sigset_t handledSignals() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGCHLD);
  for (const int number : kForwarded) sigaddset(&set, number);
  return set;
}

// Blocks the signals for as long as it lives, so that they can be waited for.
class BlockedSignals {
 public:
  BlockedSignals() { sigprocmask(SIG_BLOCK, &handled_, &before_); }
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;
  ~BlockedSignals() { restore(); }

  void restore() const { sigprocmask(SIG_SETMASK, &before_, nullptr); }
  const sigset_t& handled() const { return handled_; }

 private:
  sigset_t handled_ = handledSignals();
  sigset_t before_{};
};

// Two pipes between parent and child: the child says that its network is made (one byte) or why
// not, then waits until the parent has noted it; a failed exec is reported the same way.
struct Pipe {
  Pipe() {
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("cannot make a pipe");
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe() {
    closeEnd(0);
    closeEnd(1);
  }
  void closeEnd(std::size_t end) {
    if (ends[end] >= 0) close(ends[end]);
    ends[end] = -1;
  }
  void write(const std::string& text) const {
    [[maybe_unused]] const auto count = ::write(ends[1], text.data(), text.size());
  }
  // Up to `limit` bytes, fewer at the end of the stream.
  std::string read(std::size_t limit) const {
    std::string text;
    char byte = 0;
    while (text.size() < limit) {
      const auto count = ::read(ends[0], &byte, 1);
      if (count > 0) text += byte;
      if (count == 0 || (count < 0 && errno != EINTR)) break;
    }
    return text;
  }

  std::array<int, 2> ends{};
};

constexpr auto kPrepared = ".";

[[noreturn]] void becomeProgram(const Launch& launch, const BlockedSignals& signals, Pipe& report,
                                Pipe& goAhead) {
  report.closeEnd(0);
  goAhead.closeEnd(1);
  try {
    if (launch.isolated) enterNetworkOfItsOwn();
  } catch (const std::exception& error) {
    report.write(error.what());
    _exit(126);
  }
  report.write(kPrepared);
  if (goAhead.read(1).empty()) _exit(126);
  for (const auto& [name, value] : launch.environment) setenv(name.c_str(), value.c_str(), 1);
  if (!launch.sessionFolder.empty()) {
    setenv("TARNI_SESSION", sessionPath(launch.sessionFolder, getpid()).c_str(), 1);
  }
  std::vector<char*> arguments;
  for (const auto& argument : launch.command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  signals.restore();
  execvp(arguments.front(), arguments.data());
  report.write("cannot start " + launch.command.front() + ": " +
               std::system_category().message(errno));
  _exit(127);
}

std::optional<int> exitCodeIfEnded(pid_t pid) {
  int status = 0;
  if (waitpid(pid, &status, WNOHANG) != pid) return std::nullopt;
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

// What a terminal sends, it sends to the program as well; only what was sent to this process alone
// is passed on.
void forward(const siginfo_t& info, pid_t pid) {
  if (info.si_signo != SIGCHLD && info.si_code <= 0) kill(pid, info.si_signo);
}

int attend(const Launch& launch, pid_t pid, const sigset_t& signals) {
  bool ticking = static_cast<bool>(launch.onTick);
  while (true) {
    if (const auto code = exitCodeIfEnded(pid)) return *code;
    if (ticking && launch.onTick(pid)) ticking = false;
    siginfo_t info{};
    const int number =
        ticking ? sigtimedwait(&signals, &info, &kTick) : sigwaitinfo(&signals, &info);
    if (number > 0) forward(info, pid);
  }
}

fs::path folderOfThisTool() {
  return fs::read_symlink("/proc/self/exe").parent_path();
}

}  // namespace

fs::path agentLibrary() {
  if (const char* chosen = std::getenv("TARNI_LIBRARY"); chosen != nullptr && *chosen != '\0') {
    if (fs::exists(chosen)) return fs::absolute(chosen);
    throw std::runtime_error(std::string("TARNI_LIBRARY names no file: ") + chosen);
  }
  const auto here = folderOfThisTool();
  for (const auto* place : {"../lib/libtarni.so", "../lib/tarni/libtarni.so"}) {
    const auto path = here / place;
    if (fs::exists(path)) return fs::canonical(path);
  }
  throw std::runtime_error("the agent's library is missing: no libtarni.so in " +
                           (here / "../lib").lexically_normal().string() +
                           " nor in its folder tarni; TARNI_LIBRARY can name it");
}

void addAgent(std::map<std::string, std::string>& environment, const fs::path& library) {
  const char* before = std::getenv("LD_PRELOAD");
  const bool isSet = before != nullptr && *before != '\0';
  environment["LD_PRELOAD"] = library.string() + (isSet ? std::string(":") + before : "");
}

fs::path scriptsFolder() {
  return (folderOfThisTool() / "../share/tarni/webscripts").lexically_normal();
}

fs::path sessionPath(const fs::path& folder, pid_t pid) {
  return folder / (std::to_string(pid) + ".session");
}

int runToTheEnd(const Launch& launch) {
  const BlockedSignals signals;
  const auto cleanUp = [&launch](pid_t pid) {
    // A program that was killed leaves its socket behind.
    std::error_code isGone;
    if (!launch.sessionFolder.empty()) fs::remove(sessionPath(launch.sessionFolder, pid), isGone);
    if (launch.onEnded) launch.onEnded();
  };
  const Reaper reaper(launch.endsWithThis, cleanUp);
  if (launch.onStarting) launch.onStarting();
  Pipe report;
  Pipe goAhead;
  const pid_t pid = fork();
  if (pid < 0) throw std::runtime_error("cannot start another process");
  if (pid == 0) becomeProgram(launch, signals, report, goAhead);
  report.closeEnd(1);
  goAhead.closeEnd(0);
  const auto refuse = [pid](const std::string& why) {
    waitpid(pid, nullptr, 0);
    throw std::runtime_error(why);
  };
  constexpr std::size_t kLongestReason = 1000;
  if (const auto first = report.read(1); first != kPrepared) {
    refuse(first + report.read(kLongestReason));
  }
  reaper.watch(pid);
  if (launch.onStarted) launch.onStarted(pid);
  goAhead.write(kPrepared);
  if (const auto why = report.read(kLongestReason); !why.empty()) refuse(why);
  const int code = attend(launch, pid, signals.handled());
  cleanUp(pid);
  return code;
}

}  // namespace tarni::host
