// The launcher: comes into a process by LD_PRELOAD, finds out which toolkit the process uses, and
// loads the agent that fits from beside itself.
//
// The constructor runs with all of the program's own libraries mapped. A process without a known
// toolkit (a shell that starts the program) is left alone and passes LD_PRELOAD on; in a process
// with one the launcher takes itself out of the environment, so that children start without it.
//
// It says on standard error what it found, in one line: always when there is a toolkit, otherwise
// only with TARNI_VERBOSE=1, since a wrapper's output is not ours to disturb.
#include <dlfcn.h>
#include <unistd.h>

#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

struct Toolkit {
  const char* library;  // that a program with windows has mapped
  char major;           // as its version begins
  const char* agent;
};

constexpr Toolkit kToolkits[] = {
    {"libQt5Gui.so.5", '5', "libtarni-qt5.so"},
    {"libQt6Gui.so.6", '6', "libtarni-qt6.so"},
};

char program[PATH_MAX] = "";
char ownPath[PATH_MAX] = "";

[[gnu::format(printf, 1, 2)]] void say(const char* format, ...) {
  char line[2 * PATH_MAX];
  const int start = std::snprintf(line, sizeof line, "tarni: %s ", program);
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(line + start, sizeof line - static_cast<size_t>(start) - 1, format, arguments);
  va_end(arguments);
  std::strcat(line, "\n");
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line, std::strlen(line));
}

void findPaths() {
  const ssize_t length = readlink("/proc/self/exe", program, sizeof program - 1);
  program[length > 0 ? length : 0] = '\0';
  Dl_info info = {};
  if (dladdr(reinterpret_cast<void*>(&findPaths), &info) != 0 && info.dli_fname) {
    if (!realpath(info.dli_fname, ownPath)) ownPath[0] = '\0';
  }
}

// The version of the toolkit when the process has it mapped, otherwise null.
const char* mappedVersion(const Toolkit& toolkit) {
  void* const mapped = dlopen(toolkit.library, RTLD_NOLOAD | RTLD_LAZY);
  if (!mapped) return nullptr;
  const auto version = reinterpret_cast<const char* (*)()>(dlsym(mapped, "qVersion"));
  const char* const text = version ? version() : nullptr;
  return text && text[0] == toolkit.major ? text : nullptr;
}

bool isOwnPath(const char* path, size_t length) {
  char copy[PATH_MAX];
  char resolved[PATH_MAX];
  if (length >= sizeof copy) return false;
  std::memcpy(copy, path, length);
  copy[length] = '\0';
  return realpath(copy, resolved) && std::strcmp(resolved, ownPath) == 0;
}

void leaveEnvironment() {
  const char* const preloaded = std::getenv("LD_PRELOAD");
  char* const kept =
      preloaded ? static_cast<char*>(std::malloc(std::strlen(preloaded) + 1)) : nullptr;
  if (!kept) return;
  char* end = kept;
  for (const char* path = preloaded; *path != '\0';) {
    const size_t length = std::strcspn(path, ": ");
    if (length > 0 && !isOwnPath(path, length)) {
      if (end != kept) *end++ = ':';
      std::memcpy(end, path, length);
      end += length;
    }
    path += length;
    if (*path != '\0') ++path;
  }
  *end = '\0';
  if (end == kept) {
    unsetenv("LD_PRELOAD");
  } else {
    setenv("LD_PRELOAD", kept, 1);
  }
  std::free(kept);
}

void load(const Toolkit& toolkit, const char* version) {
  char path[PATH_MAX + 32];
  const char* const slash = std::strrchr(ownPath, '/');
  const int folder = slash ? static_cast<int>(slash - ownPath + 1) : 0;
  std::snprintf(path, sizeof path, "%.*s%s", folder, ownPath, toolkit.agent);
  if (dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
    say("uses Qt %s: agent loaded, ports 9892 and 9898", version);
  } else {
    say("uses Qt %s: agent not loaded: %s", version, dlerror());
  }
}

[[gnu::constructor]] void launch() {
  findPaths();
  for (const Toolkit& toolkit : kToolkits) {
    if (const char* const version = mappedVersion(toolkit)) {
      leaveEnvironment();
      load(toolkit, version);
      return;
    }
  }
  const char* const verbose = std::getenv("TARNI_VERBOSE");
  if (verbose && std::strcmp(verbose, "1") == 0) {
    say("uses no toolkit known to tarni: not loaded");
  }
}

}  // namespace
