#include "host/launch/Attaching.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "host/guard/Words.h"
#include "host/launch/NoSuchProgram.h"
#include "host/launch/RunningProgram.h"

namespace tarni::host {

namespace {

// The system calls in which an event loop waits for something to happen. Whoever stands in one
// holds no lock of the allocator or the loader, which the agent needs.
constexpr std::array kWaiting = {
#ifdef SYS_poll
    SYS_poll,
#endif
#ifdef SYS_select
    SYS_select,
#endif
#ifdef SYS_epoll_wait
    SYS_epoll_wait,
#endif
    SYS_ppoll,      SYS_pselect6, SYS_epoll_pwait, SYS_restart_syscall};

// Attaches again and again until the main thread waits, and only then calls into it. All threads
// run while the call does, so that one that holds a lock gives it back.
constexpr std::string_view kScript = R"(set auto-solib-add off
set debuginfod enabled off
set unwindonsignal on
set print elements 0
handle all nostop noprint pass
set $tries = 0
while $tries < 40
  attach {process}
  shell grep -qE '^({waiting}) ' /proc/{process}/syscall
  if $_shell_exitcode == 0
    sharedlibrary libc\.so
    set $library = ((void *(*)(const char *, int)) dlopen)({library}, 2)
    if $library
      set $launch = ((void *(*)(void *, const char *)) dlsym)($library, "tarniLaunch")
      printf "\ntarni-says %s\n", ((const char *(*)(void)) $launch)()
    else
      printf "\ntarni-fails %s\n", ((const char *(*)(void)) dlerror)()
    end
    set $tries = 1000
  end
  detach
  set $tries = $tries + 1
  shell sleep 0.05
end
if $tries < 1000
  printf "\ntarni-fails its main thread is busy: try again when it waits\n"
end
)";

std::string quoted(const std::string& text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    result += c;
  }
  return result + "\"";
}

void putIn(std::string& script, std::string_view name, const std::string& value) {
  for (auto at = script.find(name); at != std::string::npos;
       at = script.find(name, at + value.size())) {
    script.replace(at, name.size(), value);
  }
}

std::string commandsFor(pid_t pid, const std::filesystem::path& library) {
  std::string waiting;
  for (const auto number : kWaiting) addWord(waiting, std::to_string(number), "|");
  std::string script(kScript);
  putIn(script, "{process}", std::to_string(pid));
  putIn(script, "{waiting}", waiting);
  putIn(script, "{library}", quoted(library));
  return script;
}

// A file for gdb's commands, gone with its owner.
class ScriptFile {
 public:
  explicit ScriptFile(const std::string& text) {
    const int descriptor = mkstemp(path_.data());
    if (descriptor < 0) throw std::runtime_error("cannot write to /tmp");
    close(descriptor);
    std::ofstream(path_) << text;
  }
  ScriptFile(const ScriptFile&) = delete;
  ScriptFile& operator=(const ScriptFile&) = delete;
  ~ScriptFile() { unlink(path_.c_str()); }

  const std::string& path() const { return path_; }

 private:
  std::string path_ = "/tmp/tarni-attach-XXXXXX";
};

std::string outputOf(const std::string& command) {
  FILE* const output = popen(command.c_str(), "r");
  if (output == nullptr) throw std::runtime_error("cannot start " + command);
  std::string text;
  std::array<char, 4096> buffer{};
  while (const auto count = fread(buffer.data(), 1, buffer.size(), output)) {
    text.append(buffer.data(), count);
  }
  pclose(output);
  return text;
}

std::optional<std::string> lineAfter(const std::string& text, const std::string& mark) {
  const auto start = text.find("\n" + mark);
  if (start == std::string::npos) return std::nullopt;
  const auto from = start + 1 + mark.size();
  return text.substr(from, text.find('\n', from) - from);
}

void requireDebugger() {
  try {
    requireProgram("gdb");
  } catch (const NoSuchProgram&) {
    throw std::runtime_error("attaching takes gdb: install the package gdb");
  }
}

}  // namespace

std::string attachAgent(pid_t pid, const std::filesystem::path& library) {
  requireDebugger();
  const ScriptFile script(commandsFor(pid, library));
  const auto output =
      outputOf("timeout -k 5 30 gdb -nx -batch -x " + script.path() + " </dev/null 2>&1");
  if (const auto said = lineAfter(output, "tarni-says ")) return *said;
  if (const auto failure = lineAfter(output, "tarni-fails ")) {
    throw std::runtime_error("the agent was not loaded: " + *failure);
  }
  if (output.find("Operation not permitted") != std::string::npos)
    throw std::runtime_error(whyNotPermitted(pid));
  throw std::runtime_error("gdb could not load the agent; it says:\n" + output);
}

}  // namespace tarni::host
