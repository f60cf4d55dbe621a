// SessionPlayer: one play of one recorded session, from the start of its program to the last step:
// in which order the steps are played, when the play is over, and what is kept of it. Main thread
// of a process without other threads, as the program is started by it.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/session/Report.h"
#include "host/session/SessionFile.h"
#include "host/session/StartedProgram.h"
#include "host/session/StepPlayer.h"

namespace tarni::host {

class SessionPlayer {
 public:
  struct Start {
    std::string program = {};  // the start-up line as for a shell; "" for the recorded one
    bool trusts = false;       // starts the recorded one although the file may be another's work
    std::vector<std::string> runOptions = {};  // for `tarni run`
  };

  // Throws as readSession() does.
  explicit SessionPlayer(const std::filesystem::path& file);

  // Starts the program and waits until the agent in it serves. Throws std::invalid_argument when
  // the session's program is not known or not trusted, NoSuchProgram, and std::runtime_error when
  // it does not come up.
  void start(const Start& start);
  // Takes the program that runs; null when it is not known which one that is.
  void attach(std::optional<pid_t> program);

  // What is known of the play so far, and whether it seems to be the wrong program.
  const PlayedSession& played() const { return played_; }

  using OnPlayed = std::function<void(const PlayedStep&)>;
  // Plays on the program of that connection until a step fails, and tells of each step. With
  // pictures of the steps, a failure keeps the view tree as well.
  const PlayedSession& play(PlaybackClient& client, StepPlayer::Manner manner,
                            const OnPlayed& onPlayed);

 private:
  void requireTrust(const std::vector<std::string>& command) const;
  void playOn(const std::vector<std::string>& program);
  void playSteps(StepPlayer& player, const OnPlayed& onPlayed);
  bool playStep(StepPlayer& player, PlayedStep& played, const OnPlayed& onPlayed);
  bool hasProgramEnded();
  void keepFailure(PlaybackClient& client, bool keepsTree);

  std::string file_;
  RecordedSession recorded_;
  Clock::time_point began_ = Clock::now();
  PlayedSession played_;
  std::optional<StartedProgram> program_;
};

}  // namespace tarni::host
