#include <CLI/CLI.hpp>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#include "host/cli/Invocation.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Files.h"
#include "host/guard/Printable.h"
#include "host/session/Report.h"
#include "host/session/SessionPlayer.h"

namespace tarni::host {

using Result = PlayedStep::Result;

namespace {

constexpr std::size_t kColumnsOfText = 60;

struct PlayOptions {
  std::string file;
  std::string report;
  std::string program;
  std::string displaySize;
  double stepSeconds = 10;
  bool guesses = false;
  bool attaches = false;
  bool ownDisplay = false;
  bool trusts = false;
};

std::string inSeconds(double value) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(1) << value << " s";
  return text.str();
}

// "  3  click UIButton "OK" (ClickButton): passed, by position, 0.7 s"
void print(const PlayedStep& played) {
  const auto& step = played.step;
  const bool hasPassed = played.result == Result::Passed;
  std::cout << std::setw(3) << step.number << "  " << step.deed() << " "
            << Terminal::strong(Terminal::clipped(step.element(), kColumnsOfText)) << " "
            << Terminal::faint("(" + step.action + ")") << ": ";
  if (hasPassed) {
    std::cout << "passed";
  } else {
    std::cout << Terminal::strong("FAILED");
  }
  if (played.located) std::cout << ", by " << nameOf(played.located->by);
  std::cout << ", " << inSeconds(played.seconds);
  if (hasPassed && !played.message.empty()) std::cout << " (" << printable(played.message) << ")";
  std::cout << std::endl;
}

void printAsJson(const PlayedStep& played) {
  const auto& step = played.step;
  const Json line = {{"number", step.number},
                     {"action", step.action},
                     {"className", step.className},
                     {"text", step.text},
                     {"passed", played.result == Result::Passed},
                     {"locator", played.located ? nameOf(played.located->by) : ""},
                     {"seconds", played.seconds},
                     {"message", played.message}};
  std::cout << printableJson(compact(line)) << std::endl;
}

// What the step looked for and what was there, for a person who has to find out why.
void printFailure(const PlayOptions& options, const PlayedStep& played) {
  const auto& step = played.step;
  std::cerr << Terminal::error("tarni: ") << options.file << ":" << step.line << ": step "
            << step.number << " (" << step.action << "): " << printable(played.message) << '\n'
            << "  looked for: " << step.element();
  if (!step.xpath.empty()) std::cerr << " at " << printable(step.xpath);
  if (step.index) std::cerr << ", number " << *step.index << " of its class";
  std::cerr << '\n';
  if (played.located || played.result == Result::Lost) return;
  std::cerr << "  was there: ";
  if (played.sameClass.empty()) std::cerr << "no " << printable(step.className) << " at all";
  constexpr std::size_t kMost = 20;
  for (std::size_t i = 0; i < std::min(kMost, played.sameClass.size()); ++i) {
    const auto& element = played.sameClass[i];
    std::cerr << (i > 0 ? ", " : printable(step.className) + " ")
              << Terminal::clipped(element.description(), 80);
  }
  if (played.sameClass.size() > kMost) std::cerr << ", … " << played.sameClass.size() << " in all";
  std::cerr << '\n';
}

void tell(Invocation& invocation, const PlayOptions& options, const PlayedStep& played) {
  if (invocation.options.json) {
    printAsJson(played);
  } else {
    print(played);
  }
  if (played.result == Result::Passed) return;
  invocation.result = played.result == Result::Lost ? ExitCode::Wire : ExitCode::No;
  printFailure(options, played);
}

SessionPlayer::Start startOf(const PlayOptions& options) {
  SessionPlayer::Start start{options.program, options.trusts};
  if (options.ownDisplay) {
    start.runOptions.push_back("--display" +
                               (options.displaySize.empty() ? "" : "=" + options.displaySize));
  }
  return start;
}

void conclude(std::ostream& out, const PlayOptions& options, const PlayedSession& played) {
  out << played.count(Result::Passed) << " of " << played.steps.size() << " steps passed, "
      << inSeconds(played.seconds) << '\n';
  if (options.report.empty()) return;
  const auto page = std::filesystem::path(options.report) / "index.html";
  writePrivateFile(page, reportPage(played));
  out << "report: " << page.string() << '\n';
}

void play(Invocation& invocation, const PlayOptions& options) {
  SessionPlayer player(options.file);
  const auto& name = invocation.options.in;
  if (!name.empty() && (!options.program.empty() || options.ownDisplay)) {
    throw std::invalid_argument("--in plays on the program that runs as " + name +
                                ": --program and --display are for one that is started");
  }
  if (!options.report.empty()) makePrivateFolder(options.report);
  if (options.attaches || !name.empty()) {
    player.attach(invocation.program(invocation.playbackPort()));
  } else {
    player.start(startOf(options));
  }
  for (const auto& warning : player.played().warnings)
    std::cerr << "tarni: note: " << printable(warning) << '\n';
  const auto& played =
      player.play(invocation.playback(),
                  {.patience = fromSeconds(options.stepSeconds),
                   .guesses = options.guesses,
                   .takesPictures = !options.report.empty()},
                  [&](const PlayedStep& step) { tell(invocation, options, step); });
  conclude(invocation.options.json ? std::cerr : std::cout, options, played);
}

}  // namespace

void declarePlay(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<PlayOptions>();
  parser.add_option("SESSION", options->file, "what `tarni record -o` has kept")
      ->option_text(" ")
      ->required();
  parser.add_option("--report", options->report, "write a page with pictures, DIR/index.html")
      ->type_name("DIR");
  parser
      .add_option("--timeout", options->stepSeconds,
                  "how long each step waits for its element (default 10)")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber.description(""));
  parser.add_flag("--guess", options->guesses,
                  "take the element of the recorded index where neither position nor text is sure");
  auto* const attaches = parser.add_flag("--attach-running", options->attaches,
                                         "play on the program that runs already (as with --in)");
  parser.add_option("--program", options->program, "start this instead of the recorded program")
      ->type_name("LINE")
      ->excludes(attaches);
  parser
      .add_flag("--trust", options->trusts,
                "start the session's program although the file is not this user's alone")
      ->excludes(attaches);
  auto* const display = parser
                            .add_option("--display", options->displaySize,
                                        "start it on a virtual X display of its own (Xvfb)")
                            ->type_name("[=WIDTHxHEIGHT]")
                            ->expected(0, 1)
                            ->excludes(attaches);
  parser.footer(
      "Starts the session's program with the agent loaded and plays the steps on it, then ends "
      "it.\n"
      "An element is found by its position, unless a text there differs from the recorded one, "
      "or by\n"
      "its class and text, when one alone on screen has them. Anything else fails, and the message "
      "says\n"
      "what stands there; with --guess the element of the recorded index among its class is taken "
      "then,\n"
      "after two seconds. Each step says how it was found. A switch is set to the recorded state,\n"
      "whatever it is now. The first step that\n"
      "fails ends the play, with exit code 1.");
  parser.callback([=, &invocation] {
    options->ownDisplay = display->count() > 0;
    play(invocation, *options);
  });
}

}  // namespace tarni::host
