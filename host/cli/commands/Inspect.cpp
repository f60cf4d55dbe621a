#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>

#include "host/cli/Invocation.h"
#include "host/cli/Serving.h"
#include "host/cli/Subcommands.h"
#include "host/guard/Files.h"
#include "host/inspector/Feed.h"
#include "host/inspector/Inspector.h"
#include "host/launch/ProgramRegistry.h"
#include "host/launch/RunningProgram.h"
#include "host/wire/Ports.h"

namespace tarni::host {

namespace {

constexpr bool kMayChoose = false;  // among several, in the page

struct InspectOptions {
  std::vector<std::string> command;
  std::string displaySize;
  bool ownDisplay = false;
  bool quiet = false;
  std::uint16_t port = 0;
};

// A file of this user's that sends a browser on to the page: everybody may read the arguments of a
// process, and the address opens the page to who knows it.
class DoorFile {
 public:
  explicit DoorFile(const std::string& address)
      : path_(ProgramRegistry().folder() / ("inspect-" + std::to_string(getpid()) + ".html")) {
    writePrivateFile(path_, "<!doctype html><meta http-equiv=\"refresh\" content=\"0;url=" +
                                address + "\"><title>Tarni inspector</title>\n");
  }
  DoorFile(const DoorFile&) = delete;
  DoorFile& operator=(const DoorFile&) = delete;
  ~DoorFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

bool hasScreen() {
  return std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr;
}

void openBrowser(const std::filesystem::path& page) {
  const std::string path = page.string();
  const pid_t pid = fork();
  if (pid != 0) return;
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  execlp("xdg-open", "xdg-open", path.c_str(), nullptr);
  _exit(127);
}

std::vector<std::string> runOptions(const InspectOptions& options) {
  std::vector<std::string> words;
  if (options.ownDisplay) {
    words.push_back(options.displaySize.empty() ? "--display" : "--display=" + options.displaySize);
  }
  // Another program has them: this one gets a network of its own.
  const bool isTaken = portUse(kPlaybackPort, "self") != PortUse::Free ||
                       portUse(kRecorderPort, "self") != PortUse::Free;
  if (isTaken) {
    const auto name = std::filesystem::path(options.command.front()).filename().string();
    words.push_back("--isolated=" + ProgramRegistry().freeName(name));
  }
  return words;
}

// For a program that does not come up.
std::string advice(const InspectOptions& options) {
  if (options.ownDisplay || hasScreen()) return "";
  return "There is no display here: --display gives it one of its own. ";
}

// What there is to look at from the beginning.
void choose(Feed& feed, Invocation& invocation, const InspectOptions& options) {
  if (!options.command.empty()) {
    feed.start(options.command);
    return;
  }
  if (const auto address = invocation.sessionAddress(kMayChoose)) {
    feed.show(subjectAt(*address));
  }
}

void inspect(Invocation& invocation, const InspectOptions& options) {
  if (!options.command.empty()) requireProgram(options.command.front());
  const AwaitedSignals signals;
  Feed feed(options.command.empty() ? std::vector<std::string>() : runOptions(options),
            advice(options));
  Inspector inspector(feed, options.port);
  choose(feed, invocation, options);
  const DoorFile door(inspector.address());
  std::cout << inspector.address() << std::endl;
  if (!options.quiet && hasScreen()) openBrowser(door.path());
  serveUntilAsked(inspector, signals);
}

}  // namespace

void declareInspect(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<InspectOptions>();
  auto* const display = parser
                            .add_option("--display", options->displaySize,
                                        "start it on a virtual X display of its own (Xvfb)")
                            ->type_name("[=WIDTHxHEIGHT]")
                            ->expected(0, 1);
  parser.add_flag("--no-browser", options->quiet, "only print the address");
  parser.add_option("--on", options->port, "the port to listen on (default: a free one)")
      ->type_name("PORT");
  parser.add_option("PROGRAM", options->command, "the program and its arguments, behind --")
      ->option_text("ARG ...");
  parser.footer(
      "Shows a program from inside, in the browser: its picture and its tree, live, and how to "
      "find\n"
      "what a person points at. Without a program it looks at the one of --in, or at the only one "
      "that\n"
      "runs, or lets choose. The address is for this user: whoever knows it drives the program.\n"
      "Until Ctrl-C, which ends the program if it was started here.");
  parser.callback([=, &invocation] {
    options->ownDisplay = display->count() > 0;
    inspect(invocation, *options);
  });
}

}  // namespace tarni::host
