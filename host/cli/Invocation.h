// Invocation: what the subcommands of one call of `tarni` share: the options that all have, and the
// connection, which is made when the first subcommand needs it. Main thread.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "host/cli/ExitCode.h"
#include "host/wire/PlaybackClient.h"
#include "host/wire/RecorderClient.h"

namespace tarni::host {

struct GlobalOptions {
  std::string in;
  std::uint16_t port = 0;
  double answerSeconds = 30;
  double connectSeconds = 3;
  bool json = false;
};

milliseconds fromSeconds(double seconds);

class Invocation {
 public:
  GlobalOptions options;
  ExitCode result = ExitCode::Ok;
  std::optional<int> programExitCode;  // of the program that `run` has run

  // The connection to the playback port. Throws WireError.
  PlaybackClient& playback();
  Answer call(const PlaybackCommand& command) { return playback().call(command); }
  void disconnect() { playback_.reset(); }

  // A new connection to the recorder port. Throws WireError.
  RecorderClient recorder();

  // Goes into the network of the program that --in names, once. Throws WireError when none has
  // the name.
  void enterNetwork();

  // The process that --in names or, without it, that serves `port`; null when it is not known.
  std::optional<pid_t> program(std::uint16_t port) const;

  std::uint16_t playbackPort() const { return options.port != 0 ? options.port : kPlaybackPort; }
  std::uint16_t recorderPort() const { return options.port != 0 ? options.port : kRecorderPort; }

 private:
  bool entered_ = false;
  std::unique_ptr<PlaybackClient> playback_;
};

}  // namespace tarni::host
