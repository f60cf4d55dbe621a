// Acting: one step while it is played: the requests that it takes, the elements that it is about,
// and what is to be said of it. Used by the acts (Acts.h); any thread, one at a time.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/guard/Json.h"
#include "host/player/ElementFinder.h"
#include "host/player/Played.h"
#include "host/player/Secrets.h"
#include "host/session/Step.h"
#include "host/session_client/SessionClient.h"

namespace tarni::host {

class Acting {
 public:
  // `played` takes what comes of it. All must outlive this.
  Acting(SessionClient& client, ElementFinder& finder, const Step& step, const Secrets& secrets,
         Deadline deadline, Played& played)
      : client_(client),
        finder_(finder),
        step_(step),
        secrets_(secrets),
        deadline_(deadline),
        played_(played) {}

  const Step& step() const { return step_; }
  // Called once, before anything is done to the program.
  void beforeActing(std::function<void()> call) { beforeActing_ = std::move(call); }
  // Whether anything was done to the program.
  bool hasActed() const { return hasActed_; }

  // The step's own element, in sight as far as it can be, and enabled. Throws StepFailure.
  FoundElement element();
  // The same, wherever it is and however.
  FoundElement elementAsItIs();
  // Another that the step names `there`, "/target" say.
  FoundElement other(const std::string& there);
  // The same, if it comes in the time that what an act brings about takes. Throws when the step's
  // own time is over.
  std::optional<FoundElement> otherSoon(const std::string& there);
  // In sight or not, since keys go to what has the focus wherever that is; null when the step has
  // none that can be told from others.
  std::optional<FoundElement> elementIfAny();

  // Asks for what is done; the costs are counted.
  Json act(const std::string& method, Json parameters);
  // The same of what can be refused now and be taken in a moment, for as long as an act may take to
  // bring something about. False when it was refused to the end.
  bool actOnceTaken(const std::string& method, const Json& parameters);
  // Whether the condition holds, or comes to hold in a short time.
  bool comesTrue(const Json& condition);
  // The same in all the time that the step has.
  bool comesTrueInTime(const Json& condition);
  // As it is now; null when it is gone.
  std::optional<Json> describedNow(long element);

  // What is typed, a secret with its value.
  std::string textToType() const;

  // {"element", "x", "y"}: the recorded place `at` in an element that may have another size now.
  // Its middle without a place.
  static Json target(const FoundElement& found, const Json& recorded, const Json& at);

  // Whatever keeps the step from its element is over when the program has come to rest.
  void awaitChange();
  // Forgets what was said and found so far.
  void startAgain();
  // Worth saying although the step passes.
  void note(const std::string& text);
  // The same of a wait that was long.
  void noteWait(Deadline begin, const std::string& until);
  // To have `value` in the step `there`, "/value" say; `inWords` says what it is.
  void propose(const std::string& there, Json value, const std::string& inWords);

 private:
  Json asked(const std::string& method, Json parameters);
  FoundElement elementInSight();
  FoundElement onceEnabled(FoundElement found);
  FoundElement other(const std::string& there, Deadline deadline);
  void proposeWays(const FoundElement& found, const std::string& there);
  std::chrono::milliseconds timeLeft() const;

  SessionClient& client_;
  ElementFinder& finder_;
  const Step& step_;
  const Secrets& secrets_;
  const Deadline deadline_;
  Played& played_;
  std::function<void()> beforeActing_;
  bool hasActed_ = false;
};

}  // namespace tarni::host
