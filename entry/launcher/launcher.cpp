// The launcher: comes into a process by LD_PRELOAD or by a debugger, finds out which toolkit the
// process uses, and loads the agent that fits from beside itself.
//
// Preloaded, its constructor runs with all of the program's own libraries mapped. A process without
// a known toolkit (a shell that starts the program) passes LD_PRELOAD on. It may also load a
// toolkit later (an interpreter does), so it gets the agent's plug-in into its environment, by
// which Qt then calls the launcher once more. In a process with a toolkit the launcher takes all of
// that out of the environment, so that children start without it.
//
// It says on standard error what it found, in one line: always when there is a toolkit, otherwise
// only with TARNI_VERBOSE=1, since a wrapper's output is not ours to disturb. A debugger gets the
// line from the function that it calls.
#include <dlfcn.h>
#include <unistd.h>

#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

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
char ownFolder[PATH_MAX] = "";  // Qt finds the plug-in in there
char said[2 * PATH_MAX] = "";

[[gnu::format(printf, 1, 2)]] void say(const char* format, ...) {
  const int start = std::snprintf(said, sizeof said, "%s ", program);
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(said + start, sizeof said - static_cast<size_t>(start), format, arguments);
  va_end(arguments);
  dprintf(STDERR_FILENO, "tarni: %s\n", said);
}

void findPaths() {
  const ssize_t length = readlink("/proc/self/exe", program, sizeof program - 1);
  program[length > 0 ? length : 0] = '\0';
  Dl_info info = {};
  if (dladdr(reinterpret_cast<void*>(&findPaths), &info) != 0 && info.dli_fname) {
    if (!realpath(info.dli_fname, ownPath)) ownPath[0] = '\0';
  }
  std::strcpy(ownFolder, ownPath);
  if (char* const slash = std::strrchr(ownFolder, '/')) *slash = '\0';
}

// The version of the toolkit when the process has it mapped, otherwise null.
const char* mappedVersion(const Toolkit& toolkit) {
  void* const mapped = dlopen(toolkit.library, RTLD_NOLOAD | RTLD_LAZY);
  if (!mapped) return nullptr;
  const auto version = reinterpret_cast<const char* (*)()>(dlsym(mapped, "qVersion"));
  const char* const text = version ? version() : nullptr;
  return text && text[0] == toolkit.major ? text : nullptr;
}

struct Variable {
  const char* name;
  const char* separators;
  const char* own;  // the part that is the launcher's
};

constexpr Variable kPreload = {"LD_PRELOAD", ": ", ownPath};
constexpr Variable kPluginPath = {"QT_PLUGIN_PATH", ":", ownFolder};
constexpr Variable kPlugins = {"QT_QPA_GENERIC_PLUGINS", ",", "tarni"};

bool isOwn(const Variable& variable, const char* text, size_t length) {
  char copy[PATH_MAX];
  char resolved[PATH_MAX];
  if (length >= sizeof copy) return false;
  std::memcpy(copy, text, length);
  copy[length] = '\0';
  return std::strcmp(copy, variable.own) == 0 ||
         (realpath(copy, resolved) && std::strcmp(resolved, variable.own) == 0);
}

// Calls `visit(text, length)` with each part of the variable's value until one returns true.
template <typename Visit>
bool anyPart(const Variable& variable, Visit visit) {
  const char* part = std::getenv(variable.name);
  while (part && *part != '\0') {
    const size_t length = std::strcspn(part, variable.separators);
    if (length > 0 && visit(part, length)) return true;
    part += length;
    if (*part != '\0') ++part;
  }
  return false;
}

bool holdsOwn(const Variable& variable) {
  return anyPart(variable,
                 [&](const char* part, size_t length) { return isOwn(variable, part, length); });
}

void takeOut(const Variable& variable) {
  if (!holdsOwn(variable)) return;
  char* const kept = static_cast<char*>(std::malloc(std::strlen(std::getenv(variable.name)) + 1));
  if (!kept) return;
  char* end = kept;
  anyPart(variable, [&](const char* part, size_t length) {
    if (isOwn(variable, part, length)) return false;
    if (end != kept) *end++ = variable.separators[0];
    std::memcpy(end, part, length);
    end += length;
    return false;
  });
  *end = '\0';
  if (end == kept) {
    unsetenv(variable.name);
  } else {
    setenv(variable.name, kept, 1);
  }
  std::free(kept);
}

void bringIn(const Variable& variable) {
  if (holdsOwn(variable)) return;
  const char* const before = std::getenv(variable.name);
  char value[2 * PATH_MAX];
  const int length = std::snprintf(value, sizeof value, "%s%c%s", variable.own,
                                   variable.separators[0], before ? before : "");
  if (length >= static_cast<int>(sizeof value)) return;
  if (!before || *before == '\0') value[length - 1] = '\0';
  setenv(variable.name, value, 1);
}

void load(const Toolkit& toolkit, const char* version) {
  char path[PATH_MAX + 32];
  std::snprintf(path, sizeof path, "%s/%s", ownFolder, toolkit.agent);
  if (dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
    say("uses Qt %s: agent loaded, ports 9892 and 9898", version);
  } else {
    say("uses Qt %s: agent not loaded: %s", version, dlerror());
  }
}

// False when the process uses no toolkit that is known.
bool launch() {
  for (const Toolkit& toolkit : kToolkits) {
    if (const char* const version = mappedVersion(toolkit)) {
      for (const Variable& variable : {kPreload, kPluginPath, kPlugins}) takeOut(variable);
      load(toolkit, version);
      return true;
    }
  }
  return false;
}

// Whoever loads the launcher later calls it.
bool isPreloaded() {
  const char* const preloaded = std::getenv(kPreload.name);
  const char* const slash = std::strrchr(ownPath, '/');
  return preloaded && slash && std::strstr(preloaded, slash + 1);
}

[[gnu::constructor]] void begin() {
  findPaths();
  if (!isPreloaded() || launch()) return;
  bringIn(kPluginPath);
  bringIn(kPlugins);
  const char* const verbose = std::getenv("TARNI_VERBOSE");
  if (verbose && std::strcmp(verbose, "1") == 0) {
    say("uses no toolkit known to tarni: not loaded");
  }
}

}  // namespace

// For those who come when the toolkit is there: a debugger, and the plug-in. GUI thread. What was
// found and done, without a line's end; the text stays the launcher's own.
extern "C" [[gnu::visibility("default")]] const char* tarniLaunch() {
  if (!launch()) say("uses no toolkit known to tarni: not loaded");
  return said;
}
