#include "host/launch/RunningProgram.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "host/launch/NoSuchProgram.h"

namespace tarni::host {

namespace fs = std::filesystem;

namespace {

// What could be read of it. An iterator over the file would throw when its process has just ended.
std::string contents(const fs::path& path) {
  const std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return std::move(text).str();
}

bool mentions(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

bool mentionsAny(const std::string& text, std::initializer_list<std::string_view> parts) {
  return std::ranges::any_of(parts, [&text](auto part) { return mentions(text, part); });
}

bool hasQtForWindows(const std::string& maps) {
  return mentionsAny(maps, {"/libQt5Gui.so", "/libQt6Gui.so"});
}

std::vector<pid_t> childrenOf(pid_t pid) {
  std::vector<pid_t> children;
  std::error_code gone;
  const auto threads = fs::path("/proc") / std::to_string(pid) / "task";
  for (fs::directory_iterator entry(threads, gone), end; !gone && entry != end;
       entry.increment(gone)) {
    std::ifstream list(entry->path() / "children");
    children.insert(children.end(), std::istream_iterator<pid_t>(list), {});
  }
  return children;
}

ProcessSeen processSeen(pid_t pid) {
  const auto folder = fs::path("/proc") / std::to_string(pid);
  std::error_code hidden;
  const std::string maps = contents(folder / "maps");
  return {pid, fs::read_symlink(folder / "exe", hidden).filename().string(), hasQtForWindows(maps),
          mentionsAny(maps, {"/libX11.so", "/libxcb.so", "/libwayland-client.so"})};
}

// Qt says in each binary that it is built into how that was done.
bool hasToolkitBuiltIn(const fs::path& program) {
  constexpr std::size_t kLongest = 100;
  const std::string bytes = contents(program);
  for (const std::string_view version : {"Qt 5.", "Qt 6."}) {
    for (auto at = bytes.find(version); at != std::string::npos; at = bytes.find(version, at + 1)) {
      const std::string build = bytes.substr(at, kLongest);
      if (mentions(build.substr(0, build.find('\0')), " static ")) return true;
    }
  }
  return false;
}

fs::path pathOfCommand(const std::string& command) {
  if (mentions(command, "/")) return command;
  const char* const path = std::getenv("PATH");
  std::istringstream folders(path != nullptr ? path : "");
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (access((fs::path(folder) / command).c_str(), X_OK) == 0) return fs::path(folder) / command;
  }
  return command;
}

constexpr auto kAgentLibrary = "/libtarni-qt";
constexpr auto kAgentThread = "tarni-io\n";  // of a program that it is built into, too

bool hasAgent(const fs::path& process) {
  std::error_code gone;
  for (fs::directory_iterator thread(process / "task", gone), end; !gone && thread != end;
       thread.increment(gone)) {
    if (contents(thread->path() / "comm") == kAgentThread) return true;
  }
  return false;
}

constexpr auto kBuiltIn =
    " has its toolkit built in (a static Qt), where the agent finds nothing to hold on to";

}  // namespace

void requireProgram(const std::string& command) {
  const auto path = pathOfCommand(command);
  std::error_code ignored;
  int error = access(path.c_str(), X_OK) == 0 ? 0 : errno;
  if (error == 0 && fs::is_directory(path, ignored)) error = EISDIR;
  if (error == 0) return;
  throw NoSuchProgram("cannot start " + command + ": " + std::system_category().message(error));
}

bool namesQt(const std::string& command) {
  return mentionsAny(contents(pathOfCommand(command)), {"libQt5", "libQt6"});
}

std::vector<ProcessSeen> processesFrom(pid_t pid) {
  std::vector<ProcessSeen> processes;
  for (std::vector<pid_t> left{pid}; !left.empty();) {
    processes.push_back(processSeen(left.back()));
    left.pop_back();
    const auto children = childrenOf(processes.back().pid);
    left.insert(left.end(), children.begin(), children.end());
  }
  return processes;
}

std::vector<ProcessSeen> processesWithAgent() {
  std::vector<ProcessSeen> found;
  std::error_code gone;
  for (fs::directory_iterator entry("/proc", gone), end; !gone && entry != end;
       entry.increment(gone)) {
    const auto pid = std::atoi(entry->path().filename().c_str());
    struct stat info {};
    const bool isOwn =
        pid > 0 && stat(entry->path().c_str(), &info) == 0 && info.st_uid == geteuid();
    if (isOwn && hasAgent(entry->path())) found.push_back(processSeen(pid));
  }
  return found;
}

std::string whyOutOfReach(const std::string& command) {
  const auto program = pathOfCommand(command);
  std::error_code failure;
  const auto file = fs::canonical(program, failure);
  const auto name = program.filename();
  if (name == "flatpak" || name == "snap" || mentions(program.string(), "/flatpak/exports/") ||
      mentions(file.string(), "/flatpak/") || mentions(program.string(), "/snap/bin/")) {
    return command + " starts its program in a sandbox, out of the agent's reach";
  }
  return !failure && hasToolkitBuiltIn(file) ? command + kBuiltIn : "";
}

std::string whyNotPermitted(pid_t pid) {
  struct stat info {};
  const auto process = "process " + std::to_string(pid);
  if (stat(("/proc/" + std::to_string(pid)).c_str(), &info) == 0 && info.st_uid != geteuid()) {
    return process + " belongs to another user (" + std::to_string(info.st_uid) + ")";
  }
  const auto scope = std::atoi(contents("/proc/sys/kernel/yama/ptrace_scope").c_str());
  if (scope > 0 && geteuid() != 0) {
    return "not permitted to attach to " + process + ": kernel.yama.ptrace_scope is " +
           std::to_string(scope) +
           "; as root it works, or after `sysctl kernel.yama.ptrace_scope=0`";
  }
  return "not permitted to attach to " + process;
}

void checkAttachable(pid_t pid) {
  const auto process = "process " + std::to_string(pid);
  const fs::path folder = "/proc/" + std::to_string(pid);
  if (pid <= 0 || !fs::exists(folder)) throw NoSuchProgram("there is no " + process);
  std::error_code failure;
  const auto program = fs::read_symlink(folder / "exe", failure);
  const std::string maps = contents(folder / "maps");
  if (failure || maps.empty()) throw std::runtime_error(whyNotPermitted(pid));
  const auto name = program.string() + " (" + process + ")";
  if (fs::read_symlink(folder / "ns/mnt", failure) != fs::read_symlink("/proc/self/ns/mnt")) {
    throw std::runtime_error(name +
                             " runs in a sandbox (Flatpak, Snap, a container), out of reach: "
                             "it does not see the agent's library");
  }
  if (mentions(maps, kAgentLibrary)) throw std::runtime_error(name + " has the agent already");
  if (!hasQtForWindows(maps)) {
    throw std::runtime_error(
        name + (hasToolkitBuiltIn(folder / "exe") ? kBuiltIn : " uses no Qt with windows"));
  }
  std::smatch tracer;
  const std::string status = contents(folder / "status");
  if (std::regex_search(status, tracer, std::regex("TracerPid:\\s*([1-9]\\d*)"))) {
    throw std::runtime_error(name + " is held by another debugger, process " + tracer[1].str());
  }
}

}  // namespace tarni::host
