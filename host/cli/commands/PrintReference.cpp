#include "host/cli/Reference.h"

#include <CLI/CLI.hpp>
#include <iostream>

#include "host/cli/Subcommands.h"

namespace tarni::host {

// Kept out of the list of commands: the installation calls it.
void declareReference(CLI::App& parser, Invocation& /*invocation*/) {
  parser.group("");
  parser.add_subcommand("man", "Print the manual page")->callback([&parser] {
    std::cout << manualPage(*parser.get_parent());
  });
  parser.add_subcommand("bash", "Print the completion for bash")->callback([&parser] {
    std::cout << bashCompletion(*parser.get_parent());
  });
  parser.require_subcommand(1);
}

}  // namespace tarni::host
