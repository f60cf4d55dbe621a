// The command line of `tarni`: from arguments or a line of text to an exit code.
#pragma once

#include <string>

#include "host/cli/ExitCode.h"

namespace tarni::host {

class Invocation;

int runTool(int argc, char** argv);

// Carries out one line of a script, as `tarni do` reads it, on the connection of the invocation.
// Failures are said on standard error and returned.
ExitCode runLine(const std::string& line, Invocation& invocation);

}  // namespace tarni::host
