#include <unistd.h>

#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>
#include <memory>

#include "host/cli/CommandLine.h"
#include "host/cli/Invocation.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"

namespace tarni::host {

namespace {

struct DoOptions {
  std::string file = "-";
  bool keepGoing = false;
};

bool isCommand(const std::string& line) {
  const auto first = line.find_first_not_of(" \t\r");
  return first != std::string::npos && line[first] != '#';
}

void carryOut(Invocation& invocation, const DoOptions& options) {
  std::ifstream file;
  if (options.file != "-") {
    file.open(options.file);
    if (!file) throw std::runtime_error("cannot read " + options.file);
  }
  std::istream& lines = options.file == "-" ? std::cin : file;
  const bool isTalk = options.file == "-" && isatty(STDIN_FILENO) == 1;
  const auto prompt = [isTalk] {
    if (isTalk) std::cerr << "tarni> " << std::flush;
  };
  auto failure = ExitCode::Ok;
  std::string line;
  int number = 0;
  for (prompt(); std::getline(lines, line); prompt()) {
    ++number;
    if (!isCommand(line)) continue;
    const auto code = runLine(line, invocation);
    if (code == ExitCode::Ok) continue;
    if (failure == ExitCode::Ok) failure = code;
    if (isTalk) continue;
    std::cerr << Terminal::error("tarni: ") << "line " << number << " failed: " << line << '\n';
    if (!options.keepGoing) break;
  }
  invocation.result = isTalk ? ExitCode::Ok : failure;
}

}  // namespace

void declareDo(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<DoOptions>();
  parser.add_option("FILE", options->file, "the commands; standard input without it")
      ->option_text(" ");
  parser.add_flag("--keep-going", options->keepGoing, "go on after a command that failed");
  parser.footer(
      "Each line is a command as behind `tarni`, with quotes where words hold blanks:\n"
      "  click --text \"Log in\"\n"
      "  wait --text Welcome --timeout 5\n"
      "Blank lines and lines that begin with # are skipped. Stops at the first command that fails\n"
      "and ends with its exit code. At a terminal it prompts and goes on.");
  parser.callback([options, &invocation] { carryOut(invocation, *options); });
}

}  // namespace tarni::host
