// Report: what the commands of one session did, as the page of a played session (host/player), with
// the commands as its steps. Asking for the same again and again, as clients do that wait, is one
// step. The session's thread.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "host/guard/Clock.h"
#include "host/player/PlayReport.h"
#include "host/webdriver/Command.h"

namespace tarni::host::webdriver {

class Report {
 public:
  // `file` becomes the page. Throws std::runtime_error when there is no folder for it.
  Report(std::filesystem::path file, PlayReport head);
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  // Writes it.
  ~Report();

  // Carries the command out and notes what came of it. Throws what it throws.
  Json run(Session& session, const Command& command, const Arguments& arguments, Handler handler);

  // An answer of the session channel, which may tell what it cost.
  void addAnswer(const Json& answer);

 private:
  struct Line {
    std::string words;
    Played played;
  };

  void note(Session& session, Line line);
  void show(Session& session, Played& played);
  void write() const;

  const std::filesystem::path file_;
  PlayReport head_;
  const Clock::time_point start_ = Clock::now();
  std::vector<Line> lines_;
  std::size_t pictures_ = 0;
  std::size_t leftOut_ = 0;
  // Of the command that runs.
  StepCosts costs_;
  bool hasActed_ = false;
  Picture last_;
};

}  // namespace tarni::host::webdriver
