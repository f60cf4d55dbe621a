// The program's own event loop, as the agent uses it: work posted into it, and coroutines that wait
// while the program runs.
//
// Nothing that makes the program run its own code happens on a waiting coroutine's stack. A click
// may open a modal dialog, whose nested loop runs inside that very click: a coroutine below it
// could go on only when the dialog closes. So the code runs from a posted event, and the
// coroutine's resumption is posted just before it: the nested loop serves the resumption when there
// is one, and otherwise the outer loop does, after the code has ended.
//
// A program that ends in the middle leaves the coroutine as it is, never resumed.
#pragma once

#include <QtCore/qglobal.h>

#include <coroutine>
#include <functional>
#include <memory>

#include "platform/Task.h"

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

namespace tarni::qt {

// True on the thread on which the program's windows live.
bool isGuiThread();

// True for what the agent's own posted work and timers arrive at. Any thread.
bool isOfAgent(const QObject& object);

// Runs `work` on the GUI thread, from whichever loop of the program runs next. Any thread.
void postToProgram(std::function<void()> work);

// One coroutine's wait; resumed once, by whatever comes first. GUI thread.
class Suspension : public std::enable_shared_from_this<Suspension> {
 public:
  // From `await_suspend`. Whatever else happens, the coroutine goes on after `atMostSeconds`.
  void begin(std::coroutine_handle<> waiting, double atMostSeconds);
  // Queues the resumption; calls after the first do nothing.
  void resumeLater();

 private:
  void resumeNow();

  std::coroutine_handle<> waiting_;
  int timer_ = 0;
  bool queued_ = false;
};

// `co_await Pause{suspension, start, atMostSeconds}` suspends, then calls `start`, which sees to it
// that `suspension->resumeLater()` is called.
struct Pause {
  std::shared_ptr<Suspension> suspension;
  std::function<void()> start;
  double atMostSeconds;

  bool await_ready() const noexcept { return false; }
  void await_suspend(std::coroutine_handle<> waiting) {
    // The coroutine, and with it this object, may be gone once `start` has run.
    const std::function<void()> begin = std::move(start);
    suspension->begin(waiting, atMostSeconds);
    begin();
  }
  void await_resume() const noexcept {}
};

// Lets the program run for `seconds`.
platform::Task<void> letProgramRun(double seconds);

}  // namespace tarni::qt
