// The commands that a host tool may send on the recorder connection: spy mode on and off, and the
// highlighting of a spied element. None is answered.
#pragma once

#include <string>

#include "platform/Task.h"

namespace tarni::RecorderCommands {

// Carries out one message as received, terminator included. Bytes that are not UTF-8 do nothing.
// Throws NSException (range) for a "highlight" without "=" or with an index that does not exist.
// Main thread.
platform::Task<void> handle(std::string message);

}  // namespace tarni::RecorderCommands
