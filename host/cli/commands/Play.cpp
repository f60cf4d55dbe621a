#include <CLI/CLI.hpp>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>

#include "host/cli/Session.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Files.h"
#include "host/guard/Printable.h"
#include "host/launch/ProgramRegistry.h"
#include "host/launch/RunningProgram.h"
#include "host/session/Report.h"
#include "host/session/SessionFile.h"
#include "host/session/StartLine.h"
#include "host/session/StartedProgram.h"
#include "host/session/StepPlayer.h"
#include "host/session/ViewTree.h"
#include "host/wire/WireError.h"

namespace tarni::host {

using Result = PlayedStep::Result;

namespace {

constexpr double kSecondsToStart = 20;
constexpr double kSecondsForAnEnd = 3;
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

std::string localTime() {
  const auto now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  std::ostringstream text;
  text << std::put_time(&parts, "%Y-%m-%d %H:%M:%S");
  return text.str();
}

// "  3  click UIButton "OK" (ClickButton): passed, by position, 0.7 s"
void print(const PlayedStep& played) {
  const auto& step = played.step;
  const bool hasPassed = played.result == Result::passed;
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
                     {"passed", played.result == Result::passed},
                     {"locator", played.located ? nameOf(played.located->by) : ""},
                     {"seconds", played.seconds},
                     {"message", played.message}};
  std::cout << printableJson(line.dump(-1, ' ', false, Json::error_handler_t::replace))
            << std::endl;
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
  if (played.located || played.result == Result::lost) return;
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

// One line an element, indented by its depth.
std::string treeOf(PlaybackClient& client) {
  try {
    ViewTree tree;
    std::string text;
    for (const auto& description : client.call({"ai_findelements"}).entries()) {
      tree.goTo(description);
      text += tree.indentation() + printable(tree.step()) + "  " +
              ElementOnScreen::fromJson(description).description() + "\n";
    }
    return text;
  } catch (const std::exception& error) {
    return std::string("(not to be had: ") + error.what() + ")";
  }
}

// One play of one session, from the program's start to the report.
class Play {
 public:
  Play(Session& session, const PlayOptions& options)
      : session_(session), options_(options), recorded_(readSession(options.file)) {
    played_.file = std::filesystem::path(options.file).filename().string();
    played_.recorded = recorded_.recorded;
    played_.played = localTime();
    for (const auto& step : recorded_.steps) played_.steps.push_back({step});
  }

  void run() {
    if (!session_.options.in.empty() && (!options_.program.empty() || options_.ownDisplay)) {
      throw std::invalid_argument("--in plays on the program that runs as " + session_.options.in +
                                  ": --program and --display are for one that is started");
    }
    if (!options_.report.empty()) makePrivateFolder(options_.report);
    const auto start = Clock::now();
    if (attaches()) {
      attach();
    } else {
      startProgram();
    }
    for (const auto& warning : played_.warnings)
      std::cerr << "tarni: note: " << printable(warning) << '\n';
    playSteps();
    played_.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    finish();
  }

 private:
  bool attaches() const { return options_.attaches || !session_.options.in.empty(); }

  void attach() {
    std::optional<pid_t> pid;
    if (!session_.options.in.empty()) {
      const auto program = ProgramRegistry().find(session_.options.in);
      if (program) pid = program->pid;
    } else {
      pid = processServing(session_.playbackPort());
    }
    const auto running = pid ? startLineOf(*pid) : std::vector<std::string>();
    played_.program = Terminal::joined(running);
    warnOfAnother(running);
  }

  void startProgram() {
    const auto command = options_.program.empty() ? recorded_.program : wordsOf(options_.program);
    if (command.empty()) {
      throw std::invalid_argument(options_.file +
                                  ":1: the session does not tell its program: name it by --program "
                                  "or play with --attach-running or --in");
    }
    if (options_.program.empty()) requireTrust(command);
    requireProgram(command.front());
    played_.program = Terminal::joined(command);
    warnOfAnother(command);
    std::vector<std::string> runOptions;
    if (options_.ownDisplay) {
      runOptions.push_back("--display" +
                           (options_.displaySize.empty() ? "" : "=" + options_.displaySize));
    }
    program_.emplace(command, runOptions);
    program_->awaitAgent(Clock::now() + fromSeconds(kSecondsToStart));
  }

  // Who writes a session says what is started.
  void requireTrust(const std::vector<std::string>& command) const {
    if (options_.trusts || recorded_.whyForeign.empty()) return;
    throw std::invalid_argument(options_.file + " starts a program of its own choice, and " +
                                recorded_.whyForeign + ": give --trust to start " +
                                inQuotes(Terminal::joined(command)) +
                                ", or name the program by --program");
  }

  void warnOfAnother(const std::vector<std::string>& running) {
    const auto expected = programName(recorded_.program);
    const auto name = programName(running);
    if (expected.empty() || name.empty() || expected == name) return;
    played_.warnings.push_back("the session was recorded with " + expected + ", not with " + name);
  }

  void playSteps() {
    StepPlayer player(session_.playback(), {.patience = fromSeconds(options_.stepSeconds),
                                            .guesses = options_.guesses,
                                            .takesPictures = !options_.report.empty()});
    auto& steps = played_.steps;
    for (std::size_t i = 0; i < steps.size(); ++i) {
      const bool isPutOff = i + 1 < steps.size() && comesTooEarly(player, steps[i], steps[i + 1]);
      if (isPutOff) std::swap(steps[i], steps[i + 1]);
      if (!playStep(player, steps[i]) || (isPutOff && !playStep(player, steps[++i]))) return;
    }
  }

  static bool comesTooEarly(StepPlayer& player, const PlayedStep& one, const PlayedStep& next) {
    try {
      return player.comesTooEarly(one.step, next.step);
    } catch (const AgentException&) {
      return false;  // the step itself will tell
    } catch (const WireError&) {
      return false;
    }
  }

  bool playStep(StepPlayer& player, PlayedStep& played) {
    played = player.play(played.step);
    const bool isLast = played.step.number == played_.steps.size();
    if (isLast && played.result == Result::lost && played.hasActed && hasProgramEnded()) {
      played.result = Result::passed;
      played.message = "the program ended";
    }
    if (session_.options.json) {
      printAsJson(played);
    } else {
      print(played);
    }
    if (played.result == Result::passed) return true;
    explain(played);
    return false;
  }

  // Another's program is taken to have ended when it closed the connection.
  bool hasProgramEnded() {
    return !program_ || program_->hasEnded(Clock::now() + fromSeconds(kSecondsForAnEnd));
  }

  void explain(const PlayedStep& played) {
    const bool isLost = played.result == Result::lost;
    session_.result = isLost ? ExitCode::wire : ExitCode::no;
    printFailure(options_, played);
    if (program_) played_.output = program_->lastOutput();
    if (!isLost && !options_.report.empty()) played_.tree = treeOf(session_.playback());
  }

  void finish() {
    const auto passed = played_.count(Result::passed);
    std::ostream& out = session_.options.json ? std::cerr : std::cout;
    out << passed << " of " << played_.steps.size() << " steps passed, "
        << inSeconds(played_.seconds) << '\n';
    if (options_.report.empty()) return;
    const auto page = std::filesystem::path(options_.report) / "index.html";
    writePrivateFile(page, reportPage(played_));
    out << "report: " << page.string() << '\n';
  }

  Session& session_;
  const PlayOptions& options_;
  RecordedSession recorded_;
  PlayedSession played_;
  std::optional<StartedProgram> program_;
};

}  // namespace

void declarePlay(CLI::App& parser, Session& session) {
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
  parser.callback([=, &session] {
    options->ownDisplay = display->count() > 0;
    Play(session, *options).run();
  });
}

}  // namespace tarni::host
