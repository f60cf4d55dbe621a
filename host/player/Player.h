// Player: plays the steps of a session on a program over its session channel, and tells of each.
// Any thread, one at a time; a step's failure is part of what is told of it.
#pragma once

#include <chrono>
#include <cstddef>
#include <limits>
#include <vector>

#include "host/player/ElementFinder.h"
#include "host/player/Played.h"
#include "host/player/Secrets.h"
#include "host/session/Session.h"
#include "host/session_client/SessionClient.h"

namespace tarni::host {

class Acting;

class PlayObserver {
 public:
  virtual ~PlayObserver() = default;
  virtual void willPlay(std::size_t /*number*/, const Step& /*step*/) {}
  // May add to what is told.
  virtual void hasPlayed(const Step& /*step*/, Played& /*played*/) {}
  // Asked before each step.
  virtual bool wantsEnd() { return false; }
  // Asked when the connection ended with the last step.
  virtual bool hasProgramEnded() { return true; }
};

class Player {
 public:
  using milliseconds = std::chrono::milliseconds;
  struct Manner {
    milliseconds patience{10'000};  // how long a step waits for its element and to act on it
    bool takesPictures = false;     // of the window, before and after each step
    Secrets secrets = {};
  };
  Player(SessionClient& client, Manner manner)
      : client_(client), finder_(client), manner_(std::move(manner)) {}

  // One step alone.
  Played play(const Step& step);

  struct Course {
    std::size_t from = 1;  // the steps' numbers
    std::size_t until = std::numeric_limits<std::size_t>::max();
    bool keepsGoing = false;  // after a step that failed
    milliseconds pause{0};    // after each step, for who looks on
  };
  // One for each step of the session, played or not. Without `keepsGoing` the first that fails is
  // the last that is played.
  std::vector<Played> play(const Session& session, const Course& course, PlayObserver& observer);

 private:
  class Show;

  void tryOften(Acting& acting, Deadline deadline);
  Played playInMenuOf(const Step& before, const Step& step, Played missed);

  SessionClient& client_;
  ElementFinder finder_;
  const Manner manner_;
};

}  // namespace tarni::host
