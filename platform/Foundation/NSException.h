// NSException: the one error type that travels through the agent. Backends throw it where the
// platform raises (an index out of range, a message to an object that does not know it); the
// playback executor turns it, like any other exception, into the "exceptionmsg" of an answer.
#pragma once

#include <stdexcept>
#include <string>

namespace tarni::platform {

inline constexpr const char* NSGenericException = "NSGenericException";
inline constexpr const char* NSInvalidArgumentException = "NSInvalidArgumentException";
inline constexpr const char* NSRangeException = "NSRangeException";

class NSException : public std::runtime_error {
 public:
  NSException(std::string name, const std::string& reason)
      : std::runtime_error(reason), name_(std::move(name)) {}

  const std::string& name() const { return name_; }
  std::string reason() const { return what(); }

 private:
  std::string name_;
};

}  // namespace tarni::platform
