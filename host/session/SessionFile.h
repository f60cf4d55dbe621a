// A session file: what a person did with a program, kept so that it can be played again. It is JSON
// with one step a line, so that a file that was cut short or edited wrongly can be reported by its
// line:
//
//   {"tarniSession":1,"program":["keepassxc"],"recorded":"2025-01-31T12:00:00Z","steps":[
//   {"time":2.25,"step":{…as the agent sent it…}},
//   {"time":4.5,"step":{…}}
//   ]}
//
// "program" is the program's start-up line, an empty array when it is not known.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "host/guard/Files.h"
#include "host/guard/Json.h"
#include "host/session/RecordedStep.h"

namespace tarni::host {

struct RecordedSession {
  std::vector<std::string> program;
  std::string recorded;  // when, in UTC
  std::vector<RecordedStep> steps;
  std::string whyForeign;  // why the file may not be this user's own work; "" when it is
};

// Throws std::invalid_argument "FILE:LINE: what is wrong" for a file that is not a whole session,
// and std::runtime_error when it cannot be read.
RecordedSession readSession(const std::filesystem::path& path);
// The same from text that is called `name` in what is thrown.
RecordedSession readSession(std::istream& file, const std::string& name);

// Writes a session while it is being recorded: after every step the file is whole and on disk, so
// that whatever ends the recording loses nothing. Only this user can read it. Failures are
// std::runtime_errors.
class SessionWriter {
 public:
  SessionWriter(const std::filesystem::path& path, const std::vector<std::string>& program);

  // `seconds` from the start of the recording; `step` as it came.
  void add(double seconds, const Json& step);
  std::size_t steps() const { return steps_; }

 private:
  void append(std::string text);

  PrivateFile file_;
  long end_ = 0;  // where the next step goes, over the closing brackets
  std::size_t steps_ = 0;
};

}  // namespace tarni::host
