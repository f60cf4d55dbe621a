// Invocation: what the subcommands of one call of `tarni` share: the options that all have, and the
// connections, which are made when the first subcommand needs them. A command uses the session
// channel when the program has one and --port does not ask for the fixed ports. Main thread.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "host/cli/ExitCode.h"
#include "host/launch/ProgramRegistry.h"
#include "host/session_client/SessionClient.h"
#include "host/wire/PlaybackClient.h"
#include "host/wire/RecorderClient.h"

namespace tarni::host {

struct GlobalOptions {
  std::string in;
  std::string session;  // the address of a session channel; "" to look for the program's
  std::uint16_t port = 0;
  double answerSeconds = 30;
  double connectSeconds = 3;
  bool json = false;
};

milliseconds fromSeconds(double seconds);

// After which a command that goes on waiting says for what.
inline constexpr std::chrono::seconds kPatienceOfPeople{2};

class Invocation {
 public:
  GlobalOptions options;
  ExitCode result = ExitCode::Ok;
  std::optional<int> programExitCode;  // of the program that `run` has run

  // The connection to the program's session channel; null when it has none or --port is given.
  // Throws WireError.
  SessionClient* session();
  // The same for what only the session channel can do. Throws std::invalid_argument as well.
  SessionClient& needSession();
  // The same of a program that may just be starting.
  SessionClient& awaitSession(Deadline deadline);
  // Asks over the session channel, with the time-out of --host-timeout. Throws as SessionClient.
  Json ask(const std::string& method, Json parameters = Json::object());

  // What the program tells of an element; an object, empty when that is none.
  Json described(long element);

  // Asks for what is done, and prints the answer with --json.
  void act(const std::string& method, Json parameters);
  // With --json prints what the program answered; whether it did.
  bool printsAnswer(const Json& answer) const;

  // The connection to the playback port. Throws WireError.
  PlaybackClient& playback();
  Answer call(const PlaybackCommand& command) { return playback().call(command); }
  void disconnect();

  // A new connection to the recorder port. Throws WireError.
  RecorderClient recorder();

  // Goes into the network of the program that --in names, once. Throws WireError when none has
  // the name.
  void enterNetwork();

  // The network of the program as `portUse` takes it; null while none has the name that --in gives.
  std::optional<std::string> network() const;

  // The address of the session channel of the program that is meant; null for none, and for several
  // of which none is chosen, unless that is refused: std::invalid_argument then.
  std::optional<std::string> sessionAddress(bool severalAreRefused = true) const;

  // The process that --in names or, without it, that serves `port`; null when it is not known.
  std::optional<pid_t> program(std::uint16_t port) const;

  std::uint16_t playbackPort() const { return options.port != 0 ? options.port : kPlaybackPort; }
  std::uint16_t recorderPort() const { return options.port != 0 ? options.port : kRecorderPort; }

 private:
  // Throws WireError when no program has the name that --in gives.
  RegisteredProgram registered() const;
  bool entered_ = false;
  bool hasLookedForSession_ = false;
  std::unique_ptr<SessionClient> session_;
  std::unique_ptr<PlaybackClient> playback_;
};

}  // namespace tarni::host
