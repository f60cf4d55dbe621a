// StreamStepPlayer: plays one recorded step after the other on a program: waits for its element,
// acts on it, checks what came of it. Any thread, one at a time; a step's failure is part of its
// result.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/session/PlayResult.h"
#include "host/stream/ElementSearch.h"
#include "host/stream/StreamStep.h"
#include "host/wire/PlaybackClient.h"

namespace tarni::host {

struct PlayedStreamStep {
  using Result = PlayResult;

  StreamStep step;
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

class StreamStepPlayer {
 public:
  struct Manner {
    milliseconds patience{};     // how long a step waits for its element to be there and tappable
    bool guesses = false;        // takes the recorded index for the element when nothing is sure
    bool takesPictures = false;  // of the window, before and after each step
  };
  StreamStepPlayer(PlaybackClient& client, Manner manner);

  PlayedStreamStep play(const StreamStep& step);

  // True when `step` types into a field that is not there while the element of `next` is: the text
  // that a dialog's first field opens with may be recorded ahead of the tap that opened the dialog.
  bool comesTooEarly(const StreamStep& step, const StreamStep& next);

 private:
  bool isReady(const StreamStep& step, bool mayGuess = false);
  bool awaitElement(PlayedStreamStep& played);
  void act(PlayedStreamStep& played, const ElementOnScreen& element);
  void type(PlayedStreamStep& played, const std::string& id);
  void setSwitch(PlayedStreamStep& played, const std::string& id);
  void send(PlayedStreamStep& played, const char* function, const std::string& id,
            const std::string& data = "");
  // "true" or "false"; null for what has no state.
  std::optional<std::string> awaitState(const StreamStep& step, const std::string& id,
                                        const std::string& wanted);
  std::optional<std::string> state(const StreamStep& step, const std::string& id);
  std::optional<std::string> answer(const char* function, const std::string& id);
  std::string picture();
  void explain(PlayedStreamStep& played, Look look);

  PlaybackClient& client_;
  ElementSearch search_;
  Manner manner_;
};

}  // namespace tarni::host
