// ExitCode: what `tarni` ends with, so that scripts can branch; and the failures behind the codes.
#pragma once

#include <stdexcept>

namespace tarni::host {

enum class ExitCode {
  Ok = 0,
  No = 1,         // not found, or the answer is "false"
  Usage = 2,      // the command line does not fit
  Wire = 3,       // no such program, no connection, or it ended, or no answer in time
  Exception = 4,  // the agent answered an exception
  Failure = 5,    // anything else: a file that cannot be written, …
};

// Nothing fits what was asked for; ends with ExitCode::No.
class NotFound : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tarni::host
