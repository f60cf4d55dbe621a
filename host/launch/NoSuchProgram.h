// NoSuchProgram: the program or process that was named is not there; the message is a sentence for
// a person.
#pragma once

#include <stdexcept>

namespace tarni::host {

class NoSuchProgram : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tarni::host
