// Error: what a command answers instead of a value: one of the standard's errors, with the status
// that belongs to it. The text is a sentence for a person. A plain value, any thread.
#pragma once

#include <stdexcept>
#include <string>

namespace tarni::host::webdriver {

class Error : public std::runtime_error {
 public:
  // `name` is one of the standard's, "no such element"; any other counts as "unknown error".
  Error(const std::string& name, const std::string& sentence);

  const std::string& name() const { return name_; }
  int status() const { return status_; }

 private:
  std::string name_;
  int status_;
};

}  // namespace tarni::host::webdriver
