#include "tests/support/Program.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <thread>

extern char** environ;

namespace tarni::test {
namespace {

std::vector<std::string> mergedEnvironment(const Program::Environment& added) {
  std::vector<std::string> merged;
  for (char** entry = environ; *entry; ++entry) {
    const std::string text = *entry;
    if (!added.contains(text.substr(0, text.find('=')))) merged.push_back(text);
  }
  for (const auto& [name, value] : added) {
    if (!value.empty()) merged.push_back(name + "=" + value);
  }
  return merged;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> all;
  for (std::string& text : texts) all.push_back(text.data());
  all.push_back(nullptr);
  return all;
}

int exitCode(int status) {
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace

Program::Program(std::vector<std::string> command, const Environment& environment) {
  char path[] = "/tmp/tarni-test-XXXXXX";
  const int output = mkostemp(path, O_CLOEXEC);
  if (output < 0) throw std::runtime_error("no file for the output of " + command.front());
  outputPath_ = path;

  // What outlives the program that started it becomes a child of this process, to be waited for.
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  std::vector<std::string> variables = mergedEnvironment(environment);
  const std::vector<char*> arguments = pointers(command);
  const std::vector<char*> merged = pointers(variables);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, output, 1);
  posix_spawn_file_actions_adddup2(&actions, output, 2);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  const int failure = posix_spawnp(&pid_, command.front().c_str(), &actions, &attributes,
                                   arguments.data(), merged.data());
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  close(output);
  if (failure != 0) throw std::runtime_error("cannot start " + command.front());
}

// Its ports are free only when all that it started has ended, too.
Program::~Program() {
  if (std::uncaught_exceptions() > 0) std::cerr << output() << stacks();
  kill(-pid_, SIGKILL);
  while (waitpid(-pid_, nullptr, 0) > 0) {
  }
  unlink(outputPath_.c_str());
}

bool Program::isRunning() {
  if (pid_ < 0) return false;
  siginfo_t info = {};
  return waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
         info.si_pid == 0;
}

int Program::wait(std::chrono::milliseconds timeout) {
  if (!eventually([this] { return !isRunning(); }, timeout)) {
    throw std::runtime_error("the program did not end in time; it printed:\n" + output());
  }
  if (waitpid(pid_, &status_, WNOHANG) < 0 && status_ == 0) return 0;
  return exitCode(status_);
}

void Program::signal(int number) const {
  kill(pid_, number);
}

std::string Program::output() const {
  std::ifstream file(outputPath_);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string Program::stacks() {
  if (!isRunning()) return "";
  const std::string command =
      "gdb -nx -batch -p " + std::to_string(pid_) + " -ex 'thread apply all backtrace 40' 2>&1";
  std::string told;
  if (FILE* const gdb = popen(command.c_str(), "r")) {
    std::array<char, 4096> part;
    while (std::fgets(part.data(), part.size(), gdb)) told += part.data();
    pclose(gdb);
  }
  return told;
}

std::string run(const std::vector<std::string>& command, const Program::Environment& environment) {
  Program program(command, environment);
  const int code = program.wait(kPatience);
  if (code != 0) {
    throw std::runtime_error(command.front() + " ended with " + std::to_string(code) + ":\n" +
                             program.output());
  }
  return program.output();
}

std::string built(const std::string& path) {
  return std::string(TARNI_BINARY_DIR) + "/" + path;
}

std::string preload(const std::string& libraries) {
  const std::string runtime = TARNI_SANITIZER_RUNTIME;
  if (runtime.empty() || libraries.empty()) return runtime + libraries;
  return runtime + ":" + libraries;
}

Program::Environment agentEnvironment() {
  const char* const options = std::getenv("ASAN_OPTIONS");
  return {{"LD_PRELOAD", preload(built("lib/libtarni.so"))},
          {"ASAN_OPTIONS", (options ? std::string(options) + ":" : "") + "detect_leaks=0"},
          {"QT_QPA_PLATFORM", "offscreen"}};
}

void pauseBetweenAttempts() {
  std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

}  // namespace tarni::test
