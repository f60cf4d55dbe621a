#include <CLI/CLI.hpp>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/cli/Invocation.h"
#include "host/cli/PlayOptions.h"
#include "host/cli/StreamPlay.h"
#include "host/cli/Subcommands.h"
#include "host/cli/Terminal.h"
#include "host/guard/Files.h"
#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/player/PlayReport.h"
#include "host/player/SessionPlay.h"

namespace tarni::host {

namespace {

using std::chrono::seconds;

constexpr seconds kTimeForChannel{5};
constexpr std::size_t kColumnsOfStep = 80;

std::string wayTo(const Step& step, const Played& played) {
  const auto ways = locatorsIn(step.element());
  const bool isKnown = played.locator && *played.locator < ways.size();
  return isKnown ? locatorInWords(ways[*played.locator]) : "";
}

// `tarni play` of a session of the session channel.
class ChannelPlay : public PlayObserver {
 public:
  ChannelPlay(Invocation& invocation, const PlayOptions& options, const SessionLines& lines)
      : invocation_(invocation),
        options_(options),
        play_(Session::fromLines(lines), {.from = options.from,
                                          .until = options.until,
                                          .keepsGoing = options.keepsGoing,
                                          .pause = fromSeconds(options.pauseSeconds)}),
        program_(options.file, play_.session().program, lines.whyForeign) {
    for (const auto& secret : options.secrets) secrets_.add(secret);
    requireSecrets();
    requirePart();
  }

  void run() {
    for (turn_ = 1; turn_ <= options_.repeat; ++turn_) {
      if (options_.repeat > 1) out() << "play " << turn_ << " of " << options_.repeat << '\n';
      playOnce();
      if (invocation_.result != ExitCode::Ok && !options_.keepsGoing) break;
    }
    conclude();
    endProgram();
  }

  void hasPlayed(const Step& step, Played& played) override {
    if (const auto* const started = program_.started()) {
      played.output = secrets_.masked(started->outputSince(outputRead_));
    }
    if (invocation_.options.json) {
      printAsJson(step, played);
    } else {
      print(step, played);
    }
    if (!played.hasFailed()) return;
    const bool isLost = played.result == Played::Result::Lost;
    if (invocation_.result == ExitCode::Ok) {
      invocation_.result = isLost ? ExitCode::Wire : ExitCode::No;
    }
    printFailure(step, played);
  }

  bool hasProgramEnded() override { return program_.hasEnded(); }

 private:
  // Before anything is started.
  void requireSecrets() {
    const auto missing = secrets_.complete(play_.secrets());
    if (missing.empty()) return;
    std::string names;
    for (const auto& name : missing) {
      addWord(names, inQuotes(name) + " (" + Secrets::variableOf(name) + ")");
    }
    throw std::invalid_argument(options_.file +
                                " types secrets that are not given: give them by --secret "
                                "NAME=VALUE or in the environment: " +
                                names);
  }

  void playOnce() {
    endProgram();
    if (options_.attaches || !invocation_.options.in.empty()) {
      program_.attach(invocation_.program(invocation_.playbackPort()));
    } else {
      program_.start(options_.start());
      const auto address = program_.started()->awaitSession(Clock::now() + kTimeForChannel);
      own_.emplace(address, fromSeconds(invocation_.options.connectSeconds));
    }
    if (turn_ == 1 && !program_.warning().empty()) {
      std::cerr << "tarni: note: " << printable(program_.warning()) << '\n';
    }
    outputRead_ = 0;
    play_.play(own_ ? *own_ : invocation_.needSession(),
               {.patience = fromSeconds(options_.stepSeconds),
                .takesPictures = !options_.report.empty(),
                .secrets = secrets_},
               *this);
  }

  // One that asks back, whether to save, say, keeps whoever waits from its end.
  void endProgram() {
    constexpr milliseconds kSoon{1'500};
    if (!own_ || program_.endsBy(Clock::now() + kSoon)) return own_.reset();
    std::cerr << "tarni: gives the program 5 s to end" << printable(openWindow()) << std::endl;
    program_.end();
    own_.reset();
  }

  // "; the dialog "Save?" is open", or "".
  std::string openWindow() {
    try {
      const auto answer = own_->call("window.list", Json::object(), milliseconds(500));
      for (const Json& window : answer.value("windows", std::vector<Json>())) {
        if (window.value("key", false)) return "; " + windowInWords(window) + " is open";
      }
    } catch (const std::exception&) {
      // it is about to end
    }
    return "";
  }

  // "  3  click UIButton "OK": passed, 0.1 s (found by …)"
  static void print(const Step& step, const Played& played) {
    std::cout << std::setw(3) << played.number << "  "
              << Terminal::strong(Terminal::clipped(step.inWords(), kColumnsOfStep)) << ": ";
    if (played.hasFailed()) {
      std::cout << Terminal::strong("FAILED");
    } else {
      std::cout << "passed";
    }
    std::cout << ", " << inSeconds(played.seconds);
    if (!played.hasFailed() && !played.message.empty()) {
      std::cout << " (" << printable(played.message) << ")";
    }
    std::cout << std::endl;
  }

  void printAsJson(const Step& step, const Played& played) const {
    const Json line = {{"number", played.number},          {"act", step.act()},
                       {"words", step.inWords()},          {"passed", !played.hasFailed()},
                       {"result", inWords(played.result)}, {"locator", wayTo(step, played)},
                       {"seconds", played.seconds},        {"message", played.message}};
    std::cout << printableJson(compact(line)) << std::endl;
  }

  void printFailure(const Step& step, const Played& played) const {
    std::cerr << Terminal::error("tarni: ") << options_.file << ": step " << played.number << " ("
              << step.act() << "): " << printable(played.message) << '\n';
    if (played.isMissing && played.candidates.empty()) std::cerr << "  nothing like it is there\n";
    for (const auto& [description, whyNot] : played.candidates) {
      std::cerr << "  there is " << elementInWords(description) << ": " << printable(whyNot)
                << '\n';
    }
  }

  std::ostream& out() const { return invocation_.options.json ? std::cerr : std::cout; }

  void conclude() {
    const auto tally = play_.tally();
    out() << tally.passed << " of " << counted(tally.wanted, "step") << " passed, "
          << inSeconds(tally.seconds) << '\n';
    if (!options_.junit.empty()) writePrivateFile(options_.junit, play_.junit(fileName()));
    if (!options_.report.empty()) writeReport();
    proposeChanges();
  }

  void writeReport() {
    PlayReport head{
        .file = fileName(), .program = program_.line(), .played = localNow(), .warnings = {}};
    if (!program_.warning().empty()) head.warnings.push_back(program_.warning());
    const auto page = play_.writeReport(options_.report, head, options_.keepsPicturesBeside);
    out() << "report: " << page.string() << '\n';
  }

  std::string fileName() const { return std::filesystem::path(options_.file).filename().string(); }

  void requirePart() const {
    if (play_.hasSteps()) return;
    if (options_.from > options_.until) throw std::invalid_argument("--until is before --from");
    throw std::invalid_argument(options_.file + " has " +
                                counted(play_.session().steps().size(), "step") +
                                ": there is no step " + std::to_string(options_.from));
  }

  // What was found by a lesser way has better ones now.
  void proposeChanges() {
    const auto changes = play_.takeProposals();
    if (changes == 0) return;
    if (options_.updates) play_.session().save(options_.file);
    out() << counted(changes, "step") << (changes == 1 ? " was" : " were")
          << " not found by the first way, or not by its text"
          << (options_.updates ? ": " + options_.file + " has what is better now"
                               : "; --update writes what is better")
          << '\n';
  }

  Invocation& invocation_;
  const PlayOptions& options_;
  SessionPlay play_;
  SessionProgram program_;
  std::optional<SessionClient> own_;  // of the program that was started
  Secrets secrets_;
  off_t outputRead_ = 0;
  std::size_t turn_ = 0;
};

void requireFits(const Invocation& invocation, const PlayOptions& options, int version) {
  const bool usesChannel = !options.secrets.empty() || !options.junit.empty() ||
                           options.pauseSeconds > 0 || options.from > 1 ||
                           options.until < PlayOptions().until || options.repeat > 1 ||
                           options.keepsGoing || options.updates || options.keepsPicturesBeside;
  if (version == 1 && usesChannel) {
    throw std::invalid_argument(options.file +
                                " is a session of the fixed stream, which is played as a whole "
                                "over the fixed ports");
  }
  if (version != 1 && invocation.options.port != 0) {
    throw std::invalid_argument(options.file +
                                " is played over the session channel only, which --port passes by");
  }
  if (!invocation.options.in.empty() && (!options.program.empty() || options.ownDisplay)) {
    throw std::invalid_argument("--in plays on the program that runs as " + invocation.options.in +
                                ": --program and --display are for one that is started");
  }
}

void play(Invocation& invocation, const PlayOptions& options) {
  const auto lines = readSessionLines(options.file);
  requireFits(invocation, options, lines.version);
  std::optional<ChannelPlay> overChannel;
  std::optional<StreamSession> stream;
  if (lines.version == 1) {
    stream = StreamSession::fromLines(lines);
  } else {
    overChannel.emplace(invocation, options, lines);
  }
  if (!options.report.empty()) makePrivateFolder(options.report);
  if (stream) return playStream(invocation, options, *std::move(stream));
  overChannel->run();
}

void declareSession(CLI::App& parser, PlayOptions& options) {
  parser.add_option("SESSION", options.file, "what `tarni record -o` has kept")
      ->option_text(" ")
      ->required();
  parser.add_option("--report", options.report, "write a page with pictures, DIR/index.html")
      ->type_name("DIR");
  parser
      .add_option("--timeout", options.stepSeconds,
                  "how long each step waits for its element, or a check to hold (default 10)")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber.description(""));
  parser.add_flag("--guess", options.guesses,
                  "take the element of the recorded index where neither position nor text is sure");
}

// Gives the option for a display, which may stand without a value.
CLI::Option* declareStart(CLI::App& parser, PlayOptions& options) {
  auto* const attaches = parser.add_flag("--attach-running", options.attaches,
                                         "play on the program that runs already (as with --in)");
  parser.add_option("--program", options.program, "start this instead of the recorded program")
      ->type_name("LINE")
      ->excludes(attaches);
  parser
      .add_flag("--trust", options.trusts,
                "start the session's program although the file is not this user's alone")
      ->excludes(attaches);
  return parser
      .add_option("--display", options.displaySize,
                  "start it on a virtual X display of its own (Xvfb)")
      ->type_name("[=WIDTHxHEIGHT]")
      ->expected(0, 1)
      ->excludes(attaches);
}

void declareCourse(CLI::App& parser, PlayOptions& options) {
  parser
      .add_flag("--pictures", options.keepsPicturesBeside,
                "keep the pictures in files beside the page, DIR/pictures")
      ->needs("--report");
  parser.add_option("--from", options.from, "the first step to play")
      ->type_name("N")
      ->check(CLI::PositiveNumber.description(""));
  parser.add_option("--until", options.until, "the last step to play")
      ->type_name("N")
      ->check(CLI::PositiveNumber.description(""));
  parser.add_flag("--keep-going", options.keepsGoing, "go on after a step that failed");
  parser.add_option("--repeat", options.repeat, "play so often, each time on a fresh start")
      ->type_name("N")
      ->check(CLI::PositiveNumber.description(""));
  parser.add_option("--slow", options.pauseSeconds, "pause after each step, for who looks on")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber.description(""));
}

void declareOutcome(CLI::App& parser, PlayOptions& options) {
  parser
      .add_option("--secret", options.secrets,
                  "the value of a secret that the session types; else TARNI_SECRET_NAME")
      ->type_name("NAME=VALUE")
      ->expected(1)
      ->take_all();
  parser.add_flag(
      "--update", options.updates,
      "write what is better for steps that had to fall back: ways to elements, texts of choices");
  parser.add_option("--junit", options.junit, "write what came of each step, for build servers")
      ->type_name("FILE");
}

}  // namespace

void declarePlay(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<PlayOptions>();
  declareSession(parser, *options);
  auto* const display = declareStart(parser, *options);
  declareCourse(parser, *options);
  declareOutcome(parser, *options);
  parser.footer(
      "Starts the session's program with the agent loaded and plays the steps on it, then ends "
      "it.\n"
      "An element is found by the first of the recorded ways that fits it alone; another way than "
      "the\n"
      "first is said. A switch, a node and a choice are brought to the recorded state. A step "
      "that\n"
      "fails says what was there instead; the first one ends the play, with exit code 1.\n"
      "Sessions of the fixed stream (version 1) are played over the fixed ports: there an element "
      "is\n"
      "found by its position, unless a text there differs, or by its class and text, when one "
      "alone "
      "on\n"
      "screen has them, and with --guess by its index among its class.");
  parser.callback([=, &invocation] {
    options->ownDisplay = display->count() > 0;
    play(invocation, *options);
  });
}

}  // namespace tarni::host
