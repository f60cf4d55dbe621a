// SystemLog: the unified log, under the subsystem "tarni". It is asynchronous by itself. Any
// thread.
#pragma once

#include <os/log.h>

#include "platform/Foundation/NSLog.h"

namespace tarni::ios {

class SystemLog : public platform::SystemLog {
 public:
  SystemLog() : log_(os_log_create("tarni", "agent")) {}

  // A line that is longer than the log takes comes in pieces.
  void write(std::string_view line) noexcept override;

 private:
  os_log_t log_;
};

}  // namespace tarni::ios
