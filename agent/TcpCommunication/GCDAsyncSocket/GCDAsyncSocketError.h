// What can go wrong with a socket.
#pragma once

#include <string>

namespace tarni {

inline constexpr const char* GCDAsyncSocketErrorDomain = "GCDAsyncSocketErrorDomain";
inline constexpr const char* NSPOSIXErrorDomain = "NSPOSIXErrorDomain";

struct NSError {
  std::string domain;
  long code = 0;
  std::string localizedDescription;
  // Empty when there is none.
  std::string localizedFailureReason;

  // One line for the log.
  std::string description() const;
};

enum class GCDAsyncSocketErrorCode {
  BadConfig = 1,
  BadParam = 2,
  ConnectTimeout = 3,
  ReadTimeout = 4,
  WriteTimeout = 5,
  ReadMaxedOut = 6,
  Closed = 7,
  Other = 8,
};

// An error of the socket domain with the description that belongs to its code.
NSError socketError(GCDAsyncSocketErrorCode code);
// The same with the message given at the place of failure (codes 1, 2 and 8).
NSError socketError(GCDAsyncSocketErrorCode code, std::string message);
// A failed system call: `systemCode` is the errno that it left.
NSError errnoError(int systemCode, std::string reason);

}  // namespace tarni
