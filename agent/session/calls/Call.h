// Call: one request on its way from a client to its answer.
//
// Its work is a coroutine that begins in a turn of the main queue. Where it waits for something of
// the program's it parks: the turn ends, so that others get theirs, and another turn takes it up
// again. It is answered once; what comes after that (its time is over, the client went) is dropped.
#pragma once

#include <atomic>
#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "agent/recording/OwnActs.h"
#include "agent/session/calls/Costs.h"
#include "agent/session/protocol/Method.h"
#include "agent/session/protocol/SessionError.h"
#include "platform/Task.h"

namespace tarni::session {

class HeldInput;
// How the client is sent a line that it did not ask for, on any thread; one for each client.
using Notify = std::function<void(std::string line)>;

class Call : public std::enable_shared_from_this<Call> {
 public:
  // Gets the result or the error; the other is null. On the thread on which the work ended.
  using Answer = std::function<void(std::shared_ptr<Result> result, const SessionError* error)>;

  // What the client has of its own.
  struct Owned {
    std::shared_ptr<HeldInput> held;
    std::shared_ptr<const Notify> notify;
  };

  Call(const Method& method, Json parameters, Owned owned, Answer answer);

  const Method& method() const { return method_; }
  const Json& parameters() const { return parameters_; }
  const std::shared_ptr<HeldInput>& held() const { return owned_.held; }
  const std::shared_ptr<const Notify>& notify() const { return owned_.notify; }
  // Milliseconds, as asked for or usual for the method; null for none.
  std::optional<double> timeout() const;

  // Any thread. Begins in a turn of the main queue.
  void begin();
  // Any thread. Answers at once with the error, and what has not begun never begins.
  void abandon(const SessionError& error);
  // Main thread. Ends the work with the error where it is parked, or where it would park next.
  void interrupt(const SessionError& error);
  // Any thread. Takes parked work up in a turn of its own.
  void takeTurn();
  // Main thread. The turn itself: until the work parks or ends. Throws nothing.
  platform::Task<void> turn();

  // --- for the work itself; main thread

  // Ends the turn. The work goes on when `resume` or `takeTurn` is called, or ends with the error
  // of `interrupt`.
  auto park() { return Parking{*this}; }
  // Takes a parked work up where the caller stands. For what touches nothing of the program any
  // more, since it is in no turn.
  void resume();
  // Of the turn, where the method acts.
  OwnActs& ownActs() { return ownActs_; }
  // Parks for that long.
  platform::Task<void> pause(double milliseconds);

 private:
  struct Parking {
    Call& call;
    bool await_ready() const noexcept { return call.interruption_.has_value(); }
    void await_suspend(std::coroutine_handle<> work) const noexcept { call.didPark(work); }
    void await_resume() const { call.throwIfInterrupted(); }
  };
  struct Turn;

  platform::Task<void> work();
  platform::Task<Result> measuredResult();
  void proceed();
  void didPark(std::coroutine_handle<> work) noexcept;
  void endTurn() noexcept;
  void throwIfInterrupted();
  void answer(std::shared_ptr<Result> result, const SessionError* error);

  const Method& method_;
  const Json parameters_;
  const Owned owned_;
  const Answer answer_;
  std::atomic<bool> isAnswered_ = false;

  // Main thread.
  bool hasBegun_ = false;
  bool isInTurn_ = false;
  std::coroutine_handle<> parked_;
  std::coroutine_handle<> item_;  // the turn's, while it waits for the work
  std::optional<SessionError> interruption_;
  OwnActs ownActs_;
};

}  // namespace tarni::session
