#include "host/stream/StreamPlayer.h"

#include <nlohmann/json.hpp>

#include "host/guard/Printable.h"
#include "host/stream/PortTree.h"
#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

// One line an element, indented by its depth.
std::string treeOf(PlaybackClient& client) {
  try {
    PortTree tree;
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

bool isDueAfterwards(StreamStepPlayer& player, const PlayedStreamStep& one,
                     const PlayedStreamStep& next) {
  try {
    return player.comesTooEarly(one.step, next.step);
  } catch (const AgentException&) {
    return false;  // the step itself will tell
  } catch (const WireError&) {
    return false;
  }
}

}  // namespace

using Result = PlayedStreamStep::Result;

StreamPlayer::StreamPlayer(const std::string& file, StreamSession recorded)
    : program_(file, recorded.program, recorded.whyForeign) {
  played_.file = std::filesystem::path(file).filename().string();
  played_.recorded = recorded.recorded;
  played_.played = localNow();
  for (auto& step : recorded.steps) played_.steps.push_back({std::move(step)});
}

void StreamPlayer::start(const SessionProgram::Start& start) {
  program_.start(start);
  tellOfProgram();
}

void StreamPlayer::attach(std::optional<pid_t> program) {
  program_.attach(program);
  tellOfProgram();
}

void StreamPlayer::tellOfProgram() {
  played_.program = program_.line();
  if (!program_.warning().empty()) played_.warnings.push_back(program_.warning());
}

const PlayedStream& StreamPlayer::play(PlaybackClient& client, StreamStepPlayer::Manner manner,
                                       const OnPlayed& onPlayed) {
  StreamStepPlayer player(client, manner);
  playSteps(player, onPlayed);
  played_.seconds = secondsSince(began_);
  if (!played_.hasPassed()) keepFailure(client, manner.takesPictures);
  return played_;
}

void StreamPlayer::playSteps(StreamStepPlayer& player, const OnPlayed& onPlayed) {
  auto& steps = played_.steps;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const bool isPutOff = i + 1 < steps.size() && isDueAfterwards(player, steps[i], steps[i + 1]);
    if (isPutOff) std::swap(steps[i], steps[i + 1]);
    if (!playStep(player, steps[i], onPlayed)) return;
    if (isPutOff && !playStep(player, steps[++i], onPlayed)) return;
  }
}

bool StreamPlayer::playStep(StreamStepPlayer& player, PlayedStreamStep& played,
                            const OnPlayed& onPlayed) {
  played = player.play(played.step);
  const bool isLast = played.step.number == played_.steps.size();
  if (isLast && played.result == Result::Lost && played.hasActed && program_.hasEnded()) {
    played.result = Result::Passed;
    played.message = "the program ended";
  }
  onPlayed(played);
  return played.result == Result::Passed;
}

void StreamPlayer::keepFailure(PlaybackClient& client, bool keepsTree) {
  if (const auto* const started = program_.started()) played_.output = started->lastOutput();
  if (keepsTree && played_.count(Result::Lost) == 0) played_.tree = treeOf(client);
}

}  // namespace tarni::host
