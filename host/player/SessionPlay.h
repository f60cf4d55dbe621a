// SessionPlay: a session that is played, once or again and again, and what comes of it: a tally,
// XML for build servers, a page, and a session with better ways to its elements. What it is played
// on is the caller's. Any thread, one at a time.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "host/player/PlayReport.h"
#include "host/player/Player.h"
#include "host/session/Session.h"

namespace tarni::host {

class SessionPlay {
 public:
  SessionPlay(Session session, Player::Course course)
      : session_(std::move(session)), course_(course) {}

  const Session& session() const { return session_; }
  // False when the session has no step in the course.
  bool hasSteps() const;
  // The secrets that the course's steps type, each once.
  std::vector<std::string> secrets() const;

  void play(SessionClient& client, Player::Manner manner, PlayObserver& observer);

  // Of all plays so far.
  struct Tally {
    std::size_t passed = 0;
    std::size_t wanted = 0;
    double seconds = 0;
  };
  Tally tally() const;
  // `name` is the suite's.
  std::string junit(const std::string& name) const;
  // Writes the page of the latest play, DIR/index.html, with its pictures in it or beside it. What
  // `head` says of the session is filled in. Failures are std::runtime_errors.
  std::filesystem::path writeReport(const std::filesystem::path& folder, PlayReport head,
                                    bool keepsPicturesBeside) const;
  // Takes into the session what is better for steps of the latest play that passed; how many.
  std::size_t takeProposals();

 private:
  bool isWhole() const;

  Session session_;
  const Player::Course course_;
  std::vector<std::vector<Played>> plays_;
};

}  // namespace tarni::host
