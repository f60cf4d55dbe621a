#include "host/launch/ChildProcess.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>
#include <thread>
#include <utility>

namespace tarni::host {

namespace {

constexpr std::chrono::milliseconds kPauseBetweenLooks{20};

std::vector<std::string> withVariables(const std::map<std::string, std::string>& added) {
  std::vector<std::string> variables;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string variable = *entry;
    if (!added.contains(variable.substr(0, variable.find('=')))) variables.push_back(variable);
  }
  for (const auto& [name, value] : added) variables.push_back(name + "=" + value);
  return variables;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  result.reserve(texts.size() + 1);
  for (auto& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

// Allocates nothing: other threads may have held a lock when the process was doubled.
[[noreturn]] void become(const char* file, char** arguments, char** variables, int output,
                         pid_t parent, int whenAlone) {
  prctl(PR_SET_PDEATHSIG, whenAlone);
  if (getppid() != parent) _exit(127);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);  // of a thread that waits for signals
  setpgid(0, 0);                             // Ctrl-C is this tool's own affair
  const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
  dup2(nothing, STDIN_FILENO);
  dup2(output, STDOUT_FILENO);
  dup2(output, STDERR_FILENO);
  close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
  execvpe(file, arguments, variables);
  _exit(127);
}

}  // namespace

ChildProcess::ChildProcess(Call call)
    : timeToEnd_(call.timeToEnd),
      output_(call.output == Output::Kept ? memfd_create("output", MFD_CLOEXEC)
                                          : fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3)) {
  auto variables = withVariables(call.environment);
  const auto arguments = pointers(call.words);
  const auto entries = pointers(variables);
  // Each writer of the one file goes on where the other stopped.
  if (call.output == Output::Kept) fcntl(output_, F_SETFL, O_APPEND);
  const pid_t parent = getpid();
  pid_ = fork();
  if (pid_ == 0) {
    become(call.file.c_str(), const_cast<char**>(arguments.data()),
           const_cast<char**>(entries.data()), output_, parent, call.whenAlone);
  }
  if (pid_ < 0) {
    close(output_);
    throw std::runtime_error("cannot start another process");
  }
}

ChildProcess::~ChildProcess() {
  askToEnd();
  if (!hasEnded(*askedAt_ + timeToEnd_)) {
    kill(-pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
  close(output_);
}

void ChildProcess::askToEnd() {
  if (askedAt_) return;
  askedAt_ = std::chrono::steady_clock::now();
  if (!hasEnded({})) kill(pid_, SIGTERM);
}

bool ChildProcess::hasEnded(Time deadline) {
  while (!isOver_) {
    isOver_ = waitpid(pid_, nullptr, WNOHANG) == pid_;
    if (isOver_ || std::chrono::steady_clock::now() >= deadline) break;
    std::this_thread::sleep_for(kPauseBetweenLooks);
  }
  return isOver_;
}

std::string ChildProcess::lastOutput() const {
  return output(0, lseek(output_, 0, SEEK_END));
}

long ChildProcess::lastOutputTime() const {
  struct stat info {};
  fstat(output_, &info);
  return info.st_mtim.tv_sec * 1'000 + info.st_mtim.tv_nsec / 1'000'000;
}

std::string ChildProcess::outputSince(off_t& position) const {
  const auto size = lseek(output_, 0, SEEK_END);
  return output(std::exchange(position, size), size);
}

std::string ChildProcess::output(off_t from, off_t until) const {
  constexpr off_t kEnough = 2000;
  const auto start = std::max(from, until - kEnough);
  std::string text(static_cast<std::size_t>(std::max<off_t>(until - start, 0)), '\0');
  const auto count = pread(output_, text.data(), text.size(), start);
  text.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return text;
}

}  // namespace tarni::host
