// LaterPage: the page of a web view that answers scripts later, through a handler that goes with
// each: whoever asks is suspended until then, and no longer than a page may be busy.
//
// A page that has not answered in time (it is busy, or shows an alert) counts as silent until it
// does answer, and one that has gone until the view loads another: nothing more is asked of it, so
// that it is waited for once only. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Task.h"

namespace tarni::ios {

class LaterPage : public std::enable_shared_from_this<LaterPage> {
 public:
  // For what came of a script: null says that its page is gone. Only the first counts.
  using Take = std::function<void(std::optional<std::string> text)>;
  // Sends a script. What it throws comes out of `evaluate`.
  using Send = std::function<void(Take take)>;

  bool isSilent() const { return state_ != State::Answers; }
  bool isGone() const { return state_ == State::Gone; }
  // Another page is in the view.
  void comeBack() { state_ = State::Answers; }

  // The answer; empty from a page that is or becomes silent: whoever asks is after native views as
  // well. Throws NSException when the page goes meanwhile.
  platform::Task<std::string> evaluate(Send send);

 private:
  enum class State { Answers, Busy, Gone };
  struct Evaluation;
  struct End;

  State state_ = State::Answers;
};

}  // namespace tarni::ios
