#include "agent/session/calls/Call.h"

#include <utility>

#include "agent/session/calls/Turns.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Foundation/NSException.h"
#include "platform/Platform.h"
#include "platform/UIKit/InputDevices.h"

namespace tarni::session {

using platform::Task;

namespace {

constexpr double kUsualWait = 10'000;  // milliseconds

// What platforms raise is, but for what names a wrong argument, nobody's fault.
const ErrorKind& errorKindOf(const std::string& exception) {
  if (exception == platform::kTakesNoTextException) return errors::kNotInteractable;
  const bool isArgument =
      exception == platform::NSInvalidArgumentException || exception == platform::NSRangeException;
  return isArgument ? errors::kInvalidArgument : errors::kUnknownError;
}

SessionError errorOf(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const SessionError& error) {
    return error;
  } catch (const platform::NSException& exception) {
    return {errorKindOf(exception.name()), exception.reason()};
  } catch (...) {
    return {errors::kUnknownError, platform::reasonOf(failure)};
  }
}

}  // namespace

// Lets the work run until it parks or ends.
struct Call::Turn {
  Call& call;

  bool await_ready() const noexcept { return false; }
  bool await_suspend(std::coroutine_handle<> item) const {
    call.isInTurn_ = true;
    call.proceed();
    if (!call.isInTurn_) return false;
    call.item_ = item;
    return true;
  }
  void await_resume() const noexcept {}
};

Call::Call(const Method& method, Json parameters, Owned owned, Answer answer)
    : method_(method),
      parameters_(std::move(parameters)),
      owned_(std::move(owned)),
      answer_(std::move(answer)) {}

std::optional<double> Call::timeout() const {
  const auto given = parameters_.find("timeout");
  if (given != parameters_.end()) return given->get<double>();
  if (method_.effect == Effect::Waits) return kUsualWait;
  return std::nullopt;
}

void Call::begin() {
  takeTurn();
}

void Call::takeTurn() {
  Turns::sharedInstance().add(shared_from_this());
}

Task<void> Call::turn() {
  const CallRef self = shared_from_this();
  const bool acts = method_.effect == Effect::Acts;
  if (acts) co_await ownActs_.begin();
  co_await Turn{*this};
  if (acts) ownActs_.settle();
}

void Call::proceed() {
  if (!std::exchange(hasBegun_, true)) {
    if (isAnswered_) return endTurn();
    platform::spawn(work(), [self = shared_from_this()](const std::exception_ptr& failure) {
      platform::logFailure("session channel", failure);
      self->endTurn();
    });
  } else if (parked_) {
    std::exchange(parked_, nullptr).resume();
  } else {
    endTurn();
  }
}

void Call::resume() {
  if (parked_) std::exchange(parked_, nullptr).resume();
}

void Call::didPark(std::coroutine_handle<> work) noexcept {
  parked_ = work;
  endTurn();
}

void Call::endTurn() noexcept {
  isInTurn_ = false;
  if (item_) std::exchange(item_, nullptr).resume();
}

void Call::interrupt(const SessionError& error) {
  interruption_ = error;
  resume();
}

void Call::abandon(const SessionError& error) {
  answer(nullptr, &error);
}

void Call::throwIfInterrupted() {
  if (interruption_) throw SessionError(*std::exchange(interruption_, std::nullopt));
}

Task<void> Call::work() {
  const CallRef self = shared_from_this();
  std::exception_ptr failure;
  try {
    answer(std::make_shared<Result>(co_await measuredResult()), nullptr);
  } catch (...) {
    failure = std::current_exception();
  }
  if (!failure) co_return;
  const SessionError error = errorOf(failure);
  answer(nullptr, &error);
}

Task<Result> Call::measuredResult() {
  if (method_.effect != Effect::Acts) co_return co_await method_.handler(shared_from_this());
  const CostMeter meter;
  Result result = co_await method_.handler(shared_from_this());
  result.value["costs"] = meter.costs();
  co_return result;
}

void Call::answer(std::shared_ptr<Result> result, const SessionError* error) {
  if (!isAnswered_.exchange(true)) answer_(std::move(result), error);
}

Task<void> Call::pause(double milliseconds) {
  if (milliseconds <= 0) co_return;
  platform::current().dispatch->afterOnMain(milliseconds / 1000, [self = weak_from_this()] {
    if (const CallRef call = self.lock()) call->takeTurn();
  });
  co_await park();
}

}  // namespace tarni::session
