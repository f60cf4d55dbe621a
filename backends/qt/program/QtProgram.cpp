#include "backends/qt/program/QtProgram.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <cmath>
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
};

// On the GUI thread, which need not be the process's first nor the one that asks first. Never
// destroyed: threads of the agent still post while the process exits.
QObject& receiver() {
  static QObject* const shared = [] {
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

void postToProgram(std::function<void()> work) {
  QCoreApplication::postEvent(&receiver(), new WorkEvent(std::move(work)));
}

void Suspension::begin(std::coroutine_handle<> waiting, double atMostSeconds) {
  waiting_ = waiting;
  const auto milliseconds = static_cast<int>(std::ceil(std::max(atMostSeconds, 0.0) * 1000));
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &receiver(),
                     [self = shared_from_this()] { self->resumeNow(); });
}

void Suspension::resumeLater() {
  if (std::exchange(queued_, true)) return;
  postToProgram([self = shared_from_this()] { self->resumeNow(); });
}

void Suspension::resumeNow() {
  if (const std::coroutine_handle<> waiting = std::exchange(waiting_, nullptr)) waiting.resume();
}

platform::Task<void> letProgramRun(double seconds) {
  Pause pause{std::make_shared<Suspension>(), [] {}, seconds};
  co_await pause;
}

}  // namespace tarni::qt
