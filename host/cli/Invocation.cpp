#include "host/cli/Invocation.h"

#include <iostream>
#include <thread>

#include "host/cli/Terminal.h"
#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/launch/NetworkNamespace.h"
#include "host/launch/RunningProgram.h"
#include "host/wire/Ports.h"
#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

// Of those with a session channel that only --in reaches.
std::string namesOfIsolated() {
  const ProgramRegistry registry;
  std::string names;
  for (const auto& program : registry.all()) {
    if (isInThisNetwork(program.pid) || !registry.sessionOf(program)) continue;
    addWord(names, program.name);
  }
  return names;
}

}  // namespace

milliseconds fromSeconds(double seconds) {
  return std::chrono::round<milliseconds>(std::chrono::duration<double>(seconds));
}

PlaybackClient& Invocation::playback() {
  if (!playback_) {
    enterNetwork();
    playback_ = std::make_unique<PlaybackClient>(
        fromSeconds(options.connectSeconds), fromSeconds(options.answerSeconds), playbackPort());
    playback_->wire().onProgress(Terminal::showProgress);
  }
  return *playback_;
}

RecorderClient Invocation::recorder() {
  enterNetwork();
  return RecorderClient(fromSeconds(options.connectSeconds), recorderPort());
}

void Invocation::disconnect() {
  playback_.reset();
  session_.reset();
  hasLookedForSession_ = false;
}

SessionClient* Invocation::session() {
  if (!hasLookedForSession_ && options.port == 0) {
    if (const auto address = sessionAddress()) {
      session_ = std::make_unique<SessionClient>(*address, fromSeconds(options.connectSeconds));
      session_->onSilence([](const std::string& method) {
        std::cerr << "tarni: waits for the program to answer " << method << std::endl;
      });
    }
    hasLookedForSession_ = true;
  }
  return session_.get();
}

SessionClient& Invocation::needSession() {
  if (auto* const client = session()) return *client;
  if (options.port != 0) {
    throw std::invalid_argument("this goes over the session channel only, which --port passes by");
  }
  const auto isolated = options.in.empty() ? namesOfIsolated() : "";
  throw std::invalid_argument(
      "this goes over the session channel, and no program with one runs here" +
      (isolated.empty() ? ": `tarni run` opens it, `tarni list` names those that run, and --in "
                          "chooses one"
                        : "; --in chooses one of those that run isolated: " + isolated));
}

SessionClient& Invocation::awaitSession(Deadline deadline) {
  constexpr milliseconds kPause{50};
  const auto soon = Clock::now() + kPatienceOfPeople;
  bool isSaid = false;
  while (options.port == 0 && Clock::now() < deadline) {
    try {
      if (auto* const client = session()) return *client;
    } catch (const WireError&) {
      // It has no channel yet.
    }
    hasLookedForSession_ = false;
    if (!isSaid && Clock::now() >= soon) {
      std::cerr << "tarni: waits for a program with a session channel" << std::endl;
      isSaid = true;
    }
    std::this_thread::sleep_for(kPause);
  }
  return needSession();
}

Json Invocation::described(long element) {
  return objectIn(ask("element.describe", {{"element", element}}), "description");
}

Json Invocation::ask(const std::string& method, Json parameters) {
  return needSession().call(method, std::move(parameters), fromSeconds(options.answerSeconds));
}

void Invocation::act(const std::string& method, Json parameters) {
  printsAnswer(ask(method, std::move(parameters)));
}

bool Invocation::printsAnswer(const Json& answer) const {
  if (options.json) std::cout << printableJson(compact(answer)) << '\n';
  return options.json;
}

RegisteredProgram Invocation::registered() const {
  const ProgramRegistry registry;
  if (auto program = registry.findByNameOrProcess(options.in)) return *std::move(program);
  for (const auto& process : processesWithAgent()) {
    if (std::to_string(process.pid) == options.in) return {options.in, process.pid, process.name};
  }
  std::string known;
  for (const auto& other : registry.all()) addWord(known, other.name);
  auto why = "no program named \"" + options.in + "\" is running with the agent (" +
             (known.empty() ? "none is" : "running: " + known) + ")";
  if (const auto elsewhere = registry.folderElsewhere(options.in)) {
    why += "; one is known in " + printable(elsewhere->string()) + ", but this command looks in " +
           printable(registry.folder().string()) + ": it needs the XDG_RUNTIME_DIR of `tarni run`";
  }
  throw WireError(why);
}

std::optional<std::string> Invocation::sessionAddress(bool severalAreRefused) const {
  const ProgramRegistry registry;
  if (!options.in.empty()) return registry.sessionOf(registered());
  if (!options.session.empty()) return options.session;
  std::optional<std::string> address;
  std::string names;
  for (const auto& program : registry.all()) {
    const auto own = registry.sessionOf(program);
    if (!own || !isInThisNetwork(program.pid)) continue;
    addWord(names, program.name);
    if (address && !severalAreRefused) return std::nullopt;
    if (address)
      throw std::invalid_argument("several programs run: choose by --in (" + names + ")");
    address = own;
  }
  return address;
}

void Invocation::enterNetwork() {
  if (options.in.empty() || entered_) return;
  joinNetworkOf(registered().pid);
  entered_ = true;
}

std::optional<std::string> Invocation::network() const {
  if (options.in.empty()) return "self";
  const auto program = ProgramRegistry().findByNameOrProcess(options.in);
  return program ? std::optional(std::to_string(program->pid)) : std::nullopt;
}

std::optional<pid_t> Invocation::program(std::uint16_t port) const {
  if (options.in.empty()) return processServing(port);
  const auto program = ProgramRegistry().findByNameOrProcess(options.in);
  return program ? std::optional(program->pid) : std::nullopt;
}

}  // namespace tarni::host
