#include <CLI/CLI.hpp>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>

#include "host/cli/Invocation.h"
#include "host/cli/Readiness.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/cli/ToolkitWatch.h"
#include "host/guard/Words.h"
#include "host/launch/FreshFolders.h"
#include "host/launch/ProgramLauncher.h"
#include "host/launch/ProgramRegistry.h"
#include "host/launch/RunningProgram.h"
#include "host/launch/VirtualDisplay.h"

namespace tarni::host {

namespace {

struct RunOptions {
  std::vector<std::string> command;
  std::string name;
  std::string displaySize = kUsualDisplaySize;
  bool isolated = false;
  bool ownDisplay = false;
  bool fresh = false;
};

std::string_view variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

// What a program in a network of its own no longer reaches, said before it is missed.
void warnOfUnreachable(bool ownDisplay) {
  if (variable("DBUS_SESSION_BUS_ADDRESS").find("abstract=") != std::string_view::npos) {
    std::cerr << "tarni: note: the D-Bus session bus is an abstract socket, which --isolated cuts "
                 "off\n";
  }
  const auto display = variable("DISPLAY");
  if (!ownDisplay && !display.empty() && display.front() != ':' && !display.starts_with("unix:")) {
    std::cerr << "tarni: note: the display " << display
              << " is reached over the network, which --isolated cuts off\n";
  }
}

// Empty when this user has none.
std::filesystem::path sessionFolder() {
  try {
    return ProgramRegistry().folder();
  } catch (const std::runtime_error& error) {
    std::cerr << "tarni: note: no session channel: " << error.what() << '\n';
    return {};
  }
}

// The program's entry among those that run, for as long as this lives.
class Registration {
 public:
  explicit Registration(const RunOptions& options)
      : command_(joined(options.command)), isIsolated_(options.isolated) {
    if (options.name.empty()) {
      const auto program = std::filesystem::path(options.command.front()).filename().string();
      name_ = registry_.freeName(program);
    } else {
      ProgramRegistry::checkName(options.name);
      registry_.checkFree(options.name);
      name_ = options.name;
    }
  }
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;
  ~Registration() {
    // Another program may have taken the name since; what has ended is forgotten by looking.
    if (isAdded_) registry_.find(name_);
  }

  void add(pid_t pid) {
    if (!isIsolated_) name_ = registry_.freeName(name_);  // nobody was told one yet
    registry_.add({name_, pid, command_, isIsolated_});
    isAdded_ = true;
    if (isIsolated_) std::cerr << "tarni: isolated as \"" << name_ << "\"\n";
  }
  // What has ended is forgotten by looking.
  void forget() const { registry_.all(); }
  const std::string& name() const { return name_; }

 private:
  ProgramRegistry registry_;
  std::string command_;
  std::string name_;
  bool isIsolated_;
  bool isAdded_ = false;
};

// What is made for a program, and gone when it has ended.
class Surroundings {
 public:
  Surroundings(const RunOptions& options, Launch& launch) {
    if (options.isolated || !launch.sessionFolder.empty()) {
      registration_.emplace(options);
      launch.onStarted = [this](pid_t pid) { registration_->add(pid); };
    }
    if (options.ownDisplay) {
      display_.emplace(options.displaySize.empty() ? kUsualDisplaySize : options.displaySize);
      launch.environment["DISPLAY"] = display_->name();
      launch.environment["QT_QPA_PLATFORM"] = "xcb";
      std::cerr << "tarni: display " << display_->name() << '\n';
    }
    if (options.fresh) folders_.emplace().addTo(launch.environment);
    launch.onStarting = [this] {
      if (folders_) folders_->make();
    };
    launch.onEnded = [this] {
      folders_.reset();
      if (registration_) registration_->forget();
    };
  }
  Surroundings(const Surroundings&) = delete;
  Surroundings& operator=(const Surroundings&) = delete;

  // The name of an isolated program.
  const std::string& name() const { return registration_->name(); }

 private:
  std::optional<Registration> registration_;
  std::optional<VirtualDisplay> display_;
  std::optional<FreshFolders> folders_;
};

// Until its end, with a word when the agent serves, or why it does not.
int runWatched(Launch& launch, const std::string& hint, bool isInReach) {
  Readiness readiness(hint);
  std::optional<ToolkitWatch> toolkit;
  if (isInReach) toolkit.emplace(launch.command.front());
  launch.onTick = [&](pid_t pid) { return readiness.check(pid, toolkit && toolkit->seesQt(pid)); };
  const int exitCode = runToTheEnd(launch);
  if (toolkit && !readiness.isReady()) toolkit->conclude();
  return exitCode;
}

void run(Invocation& invocation, const RunOptions& options) {
  if (!invocation.options.in.empty()) {
    throw std::invalid_argument("--in names a program that runs; --isolated=" +
                                invocation.options.in + " gives the name to one that is started");
  }
  requireProgram(options.command.front());
  const auto why = whyOutOfReach(options.command.front());
  if (!why.empty()) {
    std::cerr << "tarni: note: " << why << '\n';
  }
  Launch launch{options.command};
  addAgent(launch.environment, agentLibrary());
  launch.sessionFolder = sessionFolder();
  launch.isolated = options.isolated;
  launch.endsWithThis = options.isolated || options.ownDisplay || options.fresh;
  if (options.isolated) {
    warnOfUnreachable(options.ownDisplay);
  } else {
    refuseTakenPorts();
  }
  Surroundings surroundings(options, launch);
  const auto hint =
      options.isolated ? ": reach it with tarni --in " + surroundings.name() + " …" : "";
  invocation.programExitCode = runWatched(launch, hint, why.empty());
}

}  // namespace

void declareRun(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<RunOptions>();
  auto* const isolated =
      parser
          .add_option(
              "--isolated", options->name,
              "in a network of its own, known to --in by this name (default: the program's)")
          ->type_name("[=NAME]")
          ->expected(0, 1);
  auto* const display =
      parser
          .add_option("--display", options->displaySize,
                      "on a virtual X display of its own (Xvfb), ended with the program")
          ->type_name("[=WIDTHxHEIGHT]")
          ->expected(0, 1);
  parser.add_flag(
      "--fresh", options->fresh,
      "with empty folders of its own for what it keeps (HOME, XDG_…, TMPDIR), ended with "
      "the program");
  parser.add_option("PROGRAM", options->command, "the program and its arguments, behind --")
      ->option_text("ARG ...")
      ->required();
  parser.footer(
      "Signals go on to the program, and its exit code is this command's. It opens the session\n"
      "channel as well, which the commands then use. With --isolated, nothing outside reaches the\n"
      "program's ports but `tarni --in NAME …`, and it reaches no network: an X\n"
      "display on this machine works (through its file in /tmp/.X11-unix), abstract sockets, as\n"
      "some D-Bus session buses are, do not.");
  parser.callback([=, &invocation] {
    options->isolated = isolated->count() > 0;
    options->ownDisplay = display->count() > 0;
    run(invocation, *options);
  });
}

}  // namespace tarni::host
