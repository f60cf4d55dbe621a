#include "backends/qt/program/QtProgram.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QThread>
#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "platform/Foundation/Guarded.h"

namespace tarni::qt {
namespace {

class WorkEvent : public QEvent {
 public:
  explicit WorkEvent(std::function<void()> work) : QEvent(kind()), work_(std::move(work)) {}

  static QEvent::Type kind() {
    static const auto registered = static_cast<QEvent::Type>(QEvent::registerEventType());
    return registered;
  }

  // Nothing thrown reaches the program's event loop.
  void run() const noexcept { platform::runGuarded("posted work", work_); }

 private:
  std::function<void()> work_;
};

class Receiver : public QObject {
 public:
  bool event(QEvent* event) override {
    if (event->type() != WorkEvent::kind()) return QObject::event(event);
    static_cast<WorkEvent*>(event)->run();
    return true;
  }

  int after(int milliseconds, std::function<void()> work) {
    const int timer = startTimer(milliseconds, Qt::PreciseTimer);
    timers_.insert_or_assign(timer, std::move(work));
    return timer;
  }
  void cancel(int timer) {
    if (timers_.erase(timer) > 0) killTimer(timer);
  }

 protected:
  void timerEvent(QTimerEvent* event) override {
    const auto due = timers_.extract(event->timerId());
    killTimer(event->timerId());
    if (due) due.mapped()();
  }

 private:
  std::unordered_map<int, std::function<void()>> timers_;
};

// On the GUI thread, which need not be the process's first nor the one that asks first. Never
// destroyed: threads of the agent still post while the process exits.
Receiver& receiver() {
  static auto* const shared = [] {
    auto* const made = new Receiver;
    if (QCoreApplication::instance()) made->moveToThread(QCoreApplication::instance()->thread());
    return made;
  }();
  return *shared;
}

}  // namespace

bool isGuiThread() {
  return receiver().thread() == QThread::currentThread();
}

bool isOfAgent(const QObject& object) {
  return &object == &receiver();
}

void postToProgram(std::function<void()> work) {
  QCoreApplication::postEvent(&receiver(), new WorkEvent(std::move(work)));
}

void Suspension::begin(std::coroutine_handle<> waiting, double atMostSeconds) {
  waiting_ = waiting;
  const auto milliseconds = static_cast<int>(std::ceil(std::max(atMostSeconds, 0.0) * 1000));
  timer_ = receiver().after(milliseconds, [self = shared_from_this()] { self->resumeNow(); });
}

void Suspension::resumeLater() {
  if (std::exchange(queued_, true)) return;
  postToProgram([self = shared_from_this()] { self->resumeNow(); });
}

void Suspension::resumeNow() {
  const std::coroutine_handle<> waiting = std::exchange(waiting_, nullptr);
  // What comes second has no timer any more: the number may be another's, who would wait for ever.
  if (!waiting) return;
  // A program that rests is not woken for what has come already.
  receiver().cancel(timer_);
  waiting.resume();
}

platform::Task<void> letProgramRun(double seconds) {
  Pause pause{std::make_shared<Suspension>(), [] {}, seconds};
  co_await pause;
}

}  // namespace tarni::qt
