#include "host/cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "host/cli/Invocation.h"
#include "host/cli/SafeOutput.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Likeness.h"
#include "host/guard/Printable.h"
#include "host/launch/NoSuchProgram.h"
#include "host/launch/ProgramRegistry.h"
#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

constexpr auto kAbout =
    "Records, plays back and inspects programs that have the Tarni agent loaded.\n"
    "A program is started with `tarni run -- PROGRAM`; the other commands then talk to it.";

constexpr auto kFooter = R"(
Exit codes: 0 done; 1 not found, not typed, or the answer is false; 2 the command line does not
fit; 3 no such program, no connection, or no answer in time; 4 the program could not do it; 5
anything else.
`tarni run` ends with the program's own code.

An element is named by the identifier that `find` printed, or by what it looks like (--text,
--partial, --xpath, --tag, …). A position in the tree is written '\UIView[0]\UIButton[1]' or
/UIView[0]/UIButton[1]. What is hidden counts only where nothing on screen looks so (over the
session channel); `find` tells of all.

Commands go over the program's session channel, which `tarni run` opens: in milliseconds, beside a
recording that goes on, and identifiers last as long as their elements. With --port N, with a program
that has no such channel (after `tarni attach`), and for spy, send, highlight and the swipes they go
over the two ports: the first command ends recording, identifiers hold until the next find, and the
program takes the next connection only a second after the last has gone (`tarni do` carries out many
commands in one). `tarni play` goes where its session was recorded.)";

// "" when the name is one that a program can have.
std::string complaintAboutName(const std::string& name) {
  try {
    ProgramRegistry::checkName(name);
    return "";
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
}

void declareGlobalOptions(CLI::App& app, GlobalOptions& options) {
  app.add_option("--in", options.in, "the program, as `tarni list` names it")
      ->type_name("NAME|PID")
      ->check(CLI::Validator(complaintAboutName, ""));
  app.add_option("--session", options.session,
                 "the session channel at this address: a path, or tcp:127.0.0.1:PORT")
      ->type_name("ADDRESS")
      ->envname("TARNI_SESSION");
  app.add_option("--port", options.port,
                 "not the session channel, but this port: usually 9898 (record, spy: 9892)")
      ->type_name("N")
      ->check(CLI::Range(1, 65535).description(""));
  app.add_option("--host-timeout", options.answerSeconds,
                 "how long to wait for an answer (default 30)")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber.description(""));
  app.add_option("--connect-timeout", options.connectSeconds,
                 "how long to try to connect (default 3)")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber.description(""));
  app.add_flag("--json", options.json, "print what the agent answered, for programs");
}

void declareSubcommands(CLI::App& app, Invocation& invocation, bool inScript) {
  for (const auto& subcommand : subcommands()) {
    if (inScript && !subcommand.inScript) continue;
    auto* const parser = app.add_subcommand(subcommand.name, subcommand.summary);
    parser->fallthrough();
    parser->footer("");
    subcommand.declare(*parser, invocation);
  }
  app.require_subcommand(0, 1);
}

ExitCode complain(const std::exception& error, ExitCode code) {
  std::cout.flush();
  std::cerr << Terminal::error("tarni: ") << error.what() << '\n';
  return code;
}

ExitCode exitCodeOf(const RequestError& error) {
  static const std::map<std::string, ExitCode> kCodes = {
      {"no such element", ExitCode::No},     {"stale element reference", ExitCode::No},
      {"no such window", ExitCode::No},      {"invalid argument", ExitCode::Usage},
      {"invalid selector", ExitCode::Usage}, {"unknown method", ExitCode::Usage},
      {"timeout", ExitCode::Wire},
  };
  const auto found = kCodes.find(error.name());
  return found != kCodes.end() ? found->second : ExitCode::Exception;
}

constexpr auto kWhereCommandsAre = "`tarni --help` lists the commands";

// The word that stands where a command should; "" when there is none.
std::string unknownCommand(const CLI::App& app) {
  const auto words = app.remaining();
  const bool isKnown = !app.get_subcommands().empty();
  return isKnown || words.empty() || words.front().starts_with('-') ? "" : words.front();
}

// "; did you mean "find"? ", or ": " when none is like it.
std::string commandMeantBy(const CLI::App& app, const std::string& word) {
  std::vector<std::string> names;
  for (const auto* const command : app.get_subcommands({})) names.push_back(command->get_name());
  const std::vector<std::string_view> known(names.begin(), names.end());
  const auto meant = nearestName(word, known);
  return meant.empty() ? ": " : "; did you mean \"" + std::string(meant) + "\"? ";
}

// The option that is like one which the command does not have; "" for none.
std::string optionMeantIn(const CLI::App& app) {
  const auto commands = app.get_subcommands();
  const auto words = app.remaining(true);
  const auto unknown =
      std::ranges::find_if(words, [](const auto& word) { return word.starts_with("--"); });
  if (commands.empty() || unknown == words.end()) return "";
  std::vector<std::string> names;
  for (const auto* const parser : {&app, static_cast<const CLI::App*>(commands.front())}) {
    for (const auto* const option : parser->get_options()) {
      for (const auto& name : option->get_lnames()) names.push_back("--" + name);
    }
  }
  const std::vector<std::string_view> known(names.begin(), names.end());
  return std::string(nearestName(*unknown, known));
}

// Parses by `parse` and so carries out the subcommand; turns what goes wrong into an exit code.
template <typename Parse>
ExitCode carryOut(CLI::App& app, Invocation& invocation, const Parse& parse) {
  invocation.result = ExitCode::Ok;
  try {
    parse();
    if (app.get_subcommands().empty()) {
      throw std::invalid_argument(std::string("which command? ") + kWhereCommandsAre);
    }
    std::cout.flush();
    return invocation.result;
  } catch (const CLI::ParseError& error) {
    if (const auto word = unknownCommand(app); !word.empty()) {
      const auto what =
          "\"" + word + "\" is no command" + commandMeantBy(app, word) + kWhereCommandsAre;
      return complain(std::invalid_argument(what), ExitCode::Usage);
    }
    if (error.get_exit_code() != 0) std::cerr << Terminal::error("tarni: ");
    const bool isAsked = app.exit(error) == 0;
    if (const auto meant = optionMeantIn(app); !isAsked && !meant.empty()) {
      std::cerr << "Did you mean " << meant << "?\n";
    }
    return isAsked ? ExitCode::Ok : ExitCode::Usage;
  } catch (const NoSuchProgram& error) {
    return complain(error, ExitCode::Wire);
  } catch (const NotFound& error) {
    return complain(error, ExitCode::No);
  } catch (const std::invalid_argument& error) {
    return complain(error, ExitCode::Usage);
  } catch (const WireError& error) {
    invocation.disconnect();
    return complain(error, ExitCode::Wire);
  } catch (const RequestError& error) {
    std::cout.flush();
    std::cerr << Terminal::error("tarni: ") << printable(error.what()) << '\n';
    return exitCodeOf(error);
  } catch (const AgentException& error) {
    std::cout.flush();
    std::cerr << Terminal::error("tarni: ") << "the agent reports: " << printable(error.what())
              << '\n';
    return ExitCode::Exception;
  } catch (const std::exception& error) {
    return complain(error, ExitCode::Failure);
  }
}

using Words = std::vector<std::string>;

// The first word, from `word` on, that is neither an option nor an option's value; "--" is such a
// word.
Words::const_iterator behindOptions(const Words& words, Words::const_iterator word,
                                    const CLI::App& app, const CLI::App& command) {
  while (word != words.end() && word->starts_with('-') && *word != "--") {
    const auto* const own = command.get_option_no_throw(*word);
    const auto* const option = own != nullptr ? own : app.get_option_no_throw(*word);
    const bool takesNext = option != nullptr && option->get_items_expected_min() > 0;
    word += takesNext && std::next(word) != words.end() ? 2 : 1;
  }
  return word;
}

// Last word first, as the parser takes them. What follows the program to run is the program's own.
// Values that may be left out stand behind a "=": a "--" ends them where none does.
Words wordsOf(const CLI::App& app, int argc, char** argv) {
  Words words(argv + 1, argv + argc);
  const auto command = behindOptions(words, words.cbegin(), app, app);
  if (command != words.cend() && *command == "run") {
    const auto program = behindOptions(words, std::next(command), app, *app.get_subcommand("run"));
    if (program != words.cend() && *program != "--") words.insert(program, "--");
  }
  const auto isOver = std::ranges::find(words, "--");
  Words parsed;
  for (auto word = words.begin(); word != words.end(); ++word) {
    parsed.push_back(std::move(*word));
    const bool endsValue = parsed.back() == "--display" || parsed.back() == "--isolated";
    if (endsValue && word < isOver) parsed.emplace_back("--");
  }
  std::ranges::reverse(parsed);
  return parsed;
}

}  // namespace

int runTool(int argc, char** argv) {
  const SafeOutput safe;
  Invocation invocation;
  CLI::App app(kAbout, "tarni");
  app.footer(kFooter);
  app.set_version_flag("--version", "tarni " TARNI_VERSION);
  declareGlobalOptions(app, invocation.options);
  declareSubcommands(app, invocation, false);
  const auto code = carryOut(app, invocation, [&] { app.parse(wordsOf(app, argc, argv)); });
  return code == ExitCode::Ok && invocation.programExitCode ? *invocation.programExitCode
                                                            : static_cast<int>(code);
}

ExitCode runLine(const std::string& line, Invocation& invocation) {
  CLI::App app("", "");
  const bool json = invocation.options.json;
  app.add_flag("--json", invocation.options.json);
  declareSubcommands(app, invocation, true);
  const auto code = carryOut(app, invocation, [&] { app.parse(line); });
  invocation.options.json = json;
  return code;
}

}  // namespace tarni::host
