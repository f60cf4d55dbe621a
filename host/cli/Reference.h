// The reference of the command line, made from the parsers themselves so that it never disagrees
// with them.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace tarni::host {

// A manual page in the format of man(7).
std::string manualPage(const CLI::App& app);

// A completion script for bash: subcommands, options, and file names for everything else.
std::string bashCompletion(const CLI::App& app);

}  // namespace tarni::host
