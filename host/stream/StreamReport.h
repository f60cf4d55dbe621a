// StreamReport: a played session of the fixed stream as one HTML page that needs nothing beside it.
// Plain values, any thread.
#pragma once

#include <string>
#include <vector>

#include "host/stream/StreamStepPlayer.h"

namespace tarni::host {

struct PlayedStream {
  std::string file;      // the session's name
  std::string program;   // its start-up line
  std::string recorded;  // when, "" when not known
  std::string played;    // when
  double seconds = 0;
  std::vector<std::string> warnings;
  std::vector<PlayedStreamStep> steps;  // all of the session, played or not
  // On failure: a line for each element, indented by its depth; and what the program printed last.
  std::string tree;
  std::string output;

  bool hasPassed() const;
  std::size_t count(PlayedStreamStep::Result result) const;
};

// The page, in UTF-8. Everything that comes from the session or the program is escaped.
std::string streamReportPage(const PlayedStream& session);

}  // namespace tarni::host
