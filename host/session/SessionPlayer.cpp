#include "host/session/SessionPlayer.h"

#include <array>
#include <ctime>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "host/guard/Printable.h"
#include "host/launch/RunningProgram.h"
#include "host/session/StartLine.h"
#include "host/session/ViewTree.h"
#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

constexpr std::chrono::seconds kTimeToStart{20};
constexpr std::chrono::seconds kTimeForAnEnd{3};

std::string localTime() {
  const auto now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &parts);
  return text.data();
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

bool isDueAfterwards(StepPlayer& player, const PlayedStep& one, const PlayedStep& next) {
  try {
    return player.comesTooEarly(one.step, next.step);
  } catch (const AgentException&) {
    return false;  // the step itself will tell
  } catch (const WireError&) {
    return false;
  }
}

}  // namespace

using Result = PlayedStep::Result;

SessionPlayer::SessionPlayer(const std::filesystem::path& file)
    : file_(file), recorded_(readSession(file)) {
  played_.file = file.filename().string();
  played_.recorded = recorded_.recorded;
  played_.played = localTime();
  for (const auto& step : recorded_.steps) played_.steps.push_back({step});
}

void SessionPlayer::start(const Start& start) {
  const auto command = start.program.empty() ? recorded_.program : wordsOf(start.program);
  if (command.empty()) {
    throw std::invalid_argument(file_ +
                                ":1: the session does not tell its program: name it by --program "
                                "or play with --attach-running or --in");
  }
  if (start.program.empty() && !start.trusts) requireTrust(command);
  requireProgram(command.front());
  playOn(command);
  program_.emplace(command, start.runOptions);
  program_->awaitAgent(Clock::now() + kTimeToStart);
}

void SessionPlayer::attach(std::optional<pid_t> program) {
  playOn(program ? startLineOf(*program) : std::vector<std::string>());
}

// Who writes a session says what is started.
void SessionPlayer::requireTrust(const std::vector<std::string>& command) const {
  if (recorded_.whyForeign.empty()) return;
  throw std::invalid_argument(file_ + " starts a program of its own choice, and " +
                              recorded_.whyForeign + ": give --trust to start " +
                              inQuotes(joined(command)) + ", or name the program by --program");
}

void SessionPlayer::playOn(const std::vector<std::string>& program) {
  played_.program = joined(program);
  const auto expected = programName(recorded_.program);
  const auto name = programName(program);
  if (expected.empty() || name.empty() || expected == name) return;
  played_.warnings.push_back("the session was recorded with " + expected + ", not with " + name);
}

const PlayedSession& SessionPlayer::play(PlaybackClient& client, StepPlayer::Manner manner,
                                         const OnPlayed& onPlayed) {
  StepPlayer player(client, manner);
  playSteps(player, onPlayed);
  played_.seconds = std::chrono::duration<double>(Clock::now() - began_).count();
  if (!played_.hasPassed()) keepFailure(client, manner.takesPictures);
  return played_;
}

void SessionPlayer::playSteps(StepPlayer& player, const OnPlayed& onPlayed) {
  auto& steps = played_.steps;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const bool isPutOff = i + 1 < steps.size() && isDueAfterwards(player, steps[i], steps[i + 1]);
    if (isPutOff) std::swap(steps[i], steps[i + 1]);
    if (!playStep(player, steps[i], onPlayed)) return;
    if (isPutOff && !playStep(player, steps[++i], onPlayed)) return;
  }
}

bool SessionPlayer::playStep(StepPlayer& player, PlayedStep& played, const OnPlayed& onPlayed) {
  played = player.play(played.step);
  const bool isLast = played.step.number == played_.steps.size();
  if (isLast && played.result == Result::Lost && played.hasActed && hasProgramEnded()) {
    played.result = Result::Passed;
    played.message = "the program ended";
  }
  onPlayed(played);
  return played.result == Result::Passed;
}

// Another's program is taken to have ended when it closed the connection.
bool SessionPlayer::hasProgramEnded() {
  return !program_ || program_->hasEnded(Clock::now() + kTimeForAnEnd);
}

void SessionPlayer::keepFailure(PlaybackClient& client, bool keepsTree) {
  if (program_) played_.output = program_->lastOutput();
  if (keepsTree && played_.count(Result::Lost) == 0) played_.tree = treeOf(client);
}

}  // namespace tarni::host
