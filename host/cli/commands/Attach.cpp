#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <thread>

#include "host/cli/Invocation.h"
#include "host/cli/Readiness.h"
#include "host/cli/Subcommands.h"
#include "host/launch/Attaching.h"
#include "host/launch/ProgramLauncher.h"
#include "host/launch/RunningProgram.h"

namespace tarni::host {

namespace {

constexpr std::chrono::milliseconds kTick{20};

void attach(Invocation& invocation, pid_t pid) {
  if (!invocation.options.in.empty()) {
    throw std::invalid_argument("attach names its program by the process: --in is for others");
  }
  checkAttachable(pid);
  refuseTakenPorts(std::to_string(pid));
  Readiness readiness("; commands go over these ports, as no session channel is opened");
  const auto said = attachAgent(pid, agentLibrary());
  std::cerr << "tarni: " << said << '\n';
  while (!readiness.check(pid)) std::this_thread::sleep_for(kTick);
  if (!readiness.isReady()) invocation.result = ExitCode::Wire;
}

}  // namespace

void declareAttach(CLI::App& parser, Invocation& invocation) {
  const auto pid = std::make_shared<pid_t>(0);
  parser.add_option("PID", *pid, "the process, which uses Qt and has windows")->required();
  parser.footer(
      "Takes gdb, which calls into the program at a moment when it waits, and lets it go again.\n"
      "Who may debug a process may attach to it. Out of reach are programs in a sandbox (Flatpak,\n"
      "Snap, containers), programs with Qt built in, and those that another debugger holds.");
  parser.callback([pid, &invocation] { attach(invocation, *pid); });
}

}  // namespace tarni::host
