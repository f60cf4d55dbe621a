#include "host/cli/StreamPlay.h"

#include <filesystem>
#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>

#include "host/cli/Invocation.h"
#include "host/cli/Terminal.h"
#include "host/guard/Files.h"
#include "host/guard/Printable.h"
#include "host/stream/StreamPlayer.h"
#include "host/stream/StreamReport.h"

namespace tarni::host {

namespace {

using Result = PlayedStreamStep::Result;

constexpr std::size_t kColumnsOfText = 60;

// "  3  click UIButton "OK" (ClickButton): passed, by position, 0.7 s"
void print(const PlayedStreamStep& played) {
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

void printAsJson(const PlayedStreamStep& played) {
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
void printFailure(const PlayOptions& options, const PlayedStreamStep& played) {
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

void tell(Invocation& invocation, const PlayOptions& options, const PlayedStreamStep& played) {
  if (invocation.options.json) {
    printAsJson(played);
  } else {
    print(played);
  }
  if (played.result == Result::Passed) return;
  invocation.result = played.result == Result::Lost ? ExitCode::Wire : ExitCode::No;
  printFailure(options, played);
}

void conclude(std::ostream& out, const PlayOptions& options, const PlayedStream& played) {
  out << played.count(Result::Passed) << " of " << counted(played.steps.size(), "step")
      << " passed, " << inSeconds(played.seconds) << '\n';
  if (options.report.empty()) return;
  const auto page = std::filesystem::path(options.report) / "index.html";
  writePrivateFile(page, streamReportPage(played));
  out << "report: " << page.string() << '\n';
}

}  // namespace

void playStream(Invocation& invocation, const PlayOptions& options, StreamSession session) {
  StreamPlayer player(options.file, std::move(session));
  if (options.attaches || !invocation.options.in.empty()) {
    player.attach(invocation.program(invocation.playbackPort()));
  } else {
    player.start(options.start());
  }
  for (const auto& warning : player.played().warnings) {
    std::cerr << "tarni: note: " << printable(warning) << '\n';
  }
  const auto& played =
      player.play(invocation.playback(),
                  {.patience = fromSeconds(options.stepSeconds),
                   .guesses = options.guesses,
                   .takesPictures = !options.report.empty()},
                  [&](const PlayedStreamStep& step) { tell(invocation, options, step); });
  conclude(invocation.options.json ? std::cerr : std::cout, options, played);
}

}  // namespace tarni::host
