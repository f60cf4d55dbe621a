// Sessions of the fixed stream: what the recorder port tells of a program that has no session
// channel, kept as files of version 1 (docs/sessions.md).
#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "host/guard/Json.h"
#include "host/session/SessionLines.h"
#include "host/stream/StreamStep.h"

namespace tarni::host {

struct StreamSession {
  std::vector<std::string> program;
  std::string recorded;  // when, in UTC
  std::vector<StreamStep> steps;
  std::string whyForeign;  // why the file may not be this user's own work; "" when it is

  // Throws as readStreamSession() does.
  static StreamSession fromLines(const SessionLines& lines);
};

// Throws std::invalid_argument "FILE:LINE: what is wrong" for a file that is not one of them,
// and std::runtime_error when it cannot be read.
StreamSession readStreamSession(const std::filesystem::path& path);
// The same from text that is called `name` in what is thrown.
StreamSession readStreamSession(std::istream& file, const std::string& name);

// Writes a session while it is being recorded. Failures are std::runtime_errors.
class StreamSessionWriter {
 public:
  StreamSessionWriter(const std::filesystem::path& path, const std::vector<std::string>& program);

  // `seconds` from the start of the recording; `step` as it came.
  void add(double seconds, const Json& step);
  std::size_t steps() const { return lines_.count(); }

 private:
  SessionLinesWriter lines_;
};

}  // namespace tarni::host
