// StreamPlayer: one play of one session of the fixed stream over the fixed ports, from the start
// of its program to the last step: in which order the steps are played, when the play is over, and
// what is kept of it. Main thread of a process without other threads, as the program is started by
// it.
#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/session/SessionProgram.h"
#include "host/stream/StreamReport.h"
#include "host/stream/StreamSession.h"
#include "host/stream/StreamStepPlayer.h"

namespace tarni::host {

class StreamPlayer {
 public:
  // Of the session in that file.
  StreamPlayer(const std::string& file, StreamSession recorded);

  // Both as SessionProgram does.
  void start(const SessionProgram::Start& start);
  void attach(std::optional<pid_t> program);

  // What is known of the play so far, and whether it seems to be the wrong program.
  const PlayedStream& played() const { return played_; }

  using OnPlayed = std::function<void(const PlayedStreamStep&)>;
  // Plays on the program of that connection until a step fails, and tells of each step. With
  // pictures of the steps, a failure keeps the view tree as well.
  const PlayedStream& play(PlaybackClient& client, StreamStepPlayer::Manner manner,
                           const OnPlayed& onPlayed);

 private:
  void tellOfProgram();
  void playSteps(StreamStepPlayer& player, const OnPlayed& onPlayed);
  bool playStep(StreamStepPlayer& player, PlayedStreamStep& played, const OnPlayed& onPlayed);
  void keepFailure(PlaybackClient& client, bool keepsTree);

  Clock::time_point began_ = Clock::now();
  PlayedStream played_;
  SessionProgram program_;
};

}  // namespace tarni::host
