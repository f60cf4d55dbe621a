// WireError: the connection to the agent could not be made, ended, or carried what no agent sends.
// The text is a whole sentence for a person.
#pragma once

#include <stdexcept>

namespace tarni::host {

class WireError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The agent answered a command with "exceptionmsg"; the text is the reason it gave.
class AgentException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tarni::host
