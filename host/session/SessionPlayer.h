// SessionPlayer: one play of one session of the fixed stream over the fixed ports, from the start
// of its program to the last step: in which order the steps are played, when the play is over, and
// what is kept of it. Main thread of a process without other threads, as the program is started by
// it.
#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/session/Report.h"
#include "host/session/SessionFile.h"
#include "host/session/SessionProgram.h"
#include "host/session/StepPlayer.h"

namespace tarni::host {

class SessionPlayer {
 public:
  // Of the session in that file.
  SessionPlayer(const std::string& file, RecordedSession recorded);

  // Both as SessionProgram does.
  void start(const SessionProgram::Start& start);
  void attach(std::optional<pid_t> program);

  // What is known of the play so far, and whether it seems to be the wrong program.
  const PlayedSession& played() const { return played_; }

  using OnPlayed = std::function<void(const PlayedStep&)>;
  // Plays on the program of that connection until a step fails, and tells of each step. With
  // pictures of the steps, a failure keeps the view tree as well.
  const PlayedSession& play(PlaybackClient& client, StepPlayer::Manner manner,
                            const OnPlayed& onPlayed);

 private:
  void tellOfProgram();
  void playSteps(StepPlayer& player, const OnPlayed& onPlayed);
  bool playStep(StepPlayer& player, PlayedStep& played, const OnPlayed& onPlayed);
  void keepFailure(PlaybackClient& client, bool keepsTree);

  Clock::time_point began_ = Clock::now();
  PlayedSession played_;
  SessionProgram program_;
};

}  // namespace tarni::host
