// LaterPage: the page of a web view that answers scripts later, through a handler that goes with
// each: whoever asks is suspended until then, and no longer than a page may be busy.
//
// A page that has not answered in time (it is busy, or shows an alert) counts as silent until it
// does answer: nothing more is asked of it, so that it is waited for once only. Main thread.
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

  // True while the page is not to be talked to.
  bool isSilent() const { return isSilent_; }

  // The answer; empty from a page that is or becomes silent: whoever asks is after native views as
  // well. Throws NSException when the page goes meanwhile.
  platform::Task<std::string> evaluate(Send send);

 private:
  struct Evaluation;
  struct End;

  bool isSilent_ = false;
};

}  // namespace tarni::ios
