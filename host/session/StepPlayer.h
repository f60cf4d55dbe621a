// StepPlayer: plays one recorded step after the other on a program: waits for its element, acts on
// it, checks what came of it. Any thread, one at a time; a step's failure is part of its result.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/session/ElementSearch.h"
#include "host/session/PlayResult.h"
#include "host/session/RecordedStep.h"
#include "host/wire/PlaybackClient.h"

namespace tarni::host {

struct PlayedStep {
  using Result = PlayResult;

  RecordedStep step;
  Result result = Result::NotPlayed;
  std::optional<Located> located = {};  // null when the element was not found
  std::string message = {};             // why it failed, or what is worth saying
  double seconds = 0;
  bool hasActed = false;  // the action went out to the program
  // Pictures of the window, JPEG in base-64; empty when none were asked for.
  std::string before = {};
  std::string after = {};
  std::vector<ElementOnScreen> sameClass = {};  // on failure: what was there of its class
};

class StepPlayer {
 public:
  struct Manner {
    milliseconds patience{};     // how long a step waits for its element to be there and tappable
    bool guesses = false;        // takes the recorded index for the element when nothing is sure
    bool takesPictures = false;  // of the window, before and after each step
  };
  StepPlayer(PlaybackClient& client, Manner manner);

  PlayedStep play(const RecordedStep& step);

  // True when `step` types into a field that is not there while the element of `next` is: the text
  // that a dialog's first field opens with may be recorded ahead of the tap that opened the dialog.
  bool comesTooEarly(const RecordedStep& step, const RecordedStep& next);

 private:
  bool isReady(const RecordedStep& step, bool mayGuess = false);
  bool awaitElement(PlayedStep& played);
  void act(PlayedStep& played, const ElementOnScreen& element);
  void type(PlayedStep& played, const std::string& id);
  void setSwitch(PlayedStep& played, const std::string& id);
  void send(PlayedStep& played, const char* function, const std::string& id,
            const std::string& data = "");
  // "true" or "false"; null for what has no state.
  std::optional<std::string> awaitState(const RecordedStep& step, const std::string& id,
                                        const std::string& wanted);
  std::optional<std::string> state(const RecordedStep& step, const std::string& id);
  std::optional<std::string> answer(const char* function, const std::string& id);
  std::string picture();
  void explain(PlayedStep& played, Look look);

  PlaybackClient& client_;
  ElementSearch search_;
  Manner manner_;
};

}  // namespace tarni::host
