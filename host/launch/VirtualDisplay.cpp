#include "host/launch/VirtualDisplay.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>

#include "host/launch/StandAside.h"

namespace tarni::host {

namespace {

constexpr int kStartTimeoutMilliseconds = 10'000;

// What Xvfb reports once it is ready: the display's number and a line break. Empty when it ended.
std::string readNumber(int report, int timeoutMilliseconds) {
  std::string text;
  pollfd entry{report, POLLIN, 0};
  while (text.empty() || text.back() != '\n') {
    if (poll(&entry, 1, timeoutMilliseconds) <= 0) return "";
    std::array<char, 16> bytes{};
    const auto count = read(report, bytes.data(), bytes.size());
    if (count <= 0) return "";
    text.append(bytes.data(), static_cast<std::size_t>(count));
  }
  text.pop_back();
  return text;
}

[[noreturn]] void becomeXvfb(int report, const std::string& size, pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (getppid() != parent) _exit(127);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  fcntl(report, F_SETFD, 0);
  const auto number = std::to_string(report);
  const auto screen = size + "x24";
  execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-screen", "0", screen.c_str(), "-nolisten",
         "tcp", static_cast<char*>(nullptr));
  _exit(127);
}

// Starts Xvfb, and ends it when asked to or left alone, but not before it has reported: one that is
// ended while it starts leaves its socket behind.
[[noreturn]] void attendXvfb(int report, const std::string& size, pid_t parent) {
  sigset_t awaited;
  sigemptyset(&awaited);
  for (const int number : {SIGTERM, SIGCHLD}) sigaddset(&awaited, number);
  sigprocmask(SIG_BLOCK, &awaited, nullptr);
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (getppid() != parent) _exit(127);
  standAside(report);  // so that Ctrl-C ends the program first, and its display after it
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) _exit(127);
  const pid_t self = getpid();
  const pid_t xvfb = fork();
  if (xvfb == 0) becomeXvfb(ends[1], size, self);
  close(ends[1]);
  if (xvfb < 0) _exit(127);
  const auto number = readNumber(ends[0], kStartTimeoutMilliseconds);
  if (!number.empty()) {
    const auto line = number + '\n';
    [[maybe_unused]] const auto count = write(report, line.data(), line.size());
    int received = 0;
    sigwait(&awaited, &received);
  }
  kill(xvfb, number.empty() ? SIGKILL : SIGTERM);
  waitpid(xvfb, nullptr, 0);
  _exit(0);
}

}  // namespace

VirtualDisplay::VirtualDisplay(const std::string& size) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("cannot make a pipe for Xvfb");
  const pid_t parent = getpid();
  pid_ = fork();
  if (pid_ == 0) attendXvfb(ends[1], size, parent);
  close(ends[1]);
  const auto number = pid_ > 0 ? readNumber(ends[0], -1) : "";
  close(ends[0]);
  if (number.empty()) {
    if (pid_ > 0) waitpid(pid_, nullptr, 0);
    throw std::runtime_error("Xvfb does not start: is the package xvfb installed?");
  }
  name_ = ":" + number;
}

VirtualDisplay::~VirtualDisplay() {
  kill(pid_, SIGTERM);
  waitpid(pid_, nullptr, 0);
}

}  // namespace tarni::host
