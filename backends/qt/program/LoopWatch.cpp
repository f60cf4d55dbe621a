#include "backends/qt/program/LoopWatch.h"

#include <glib.h>
#include <private/qeventdispatcher_glib_p.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QMetaEnum>
#include <QtCore/QThread>
#include <array>
#include <atomic>
#include <cstring>
#include <mutex>
#include <string>

#include "backends/qt/program/QtProgram.h"

namespace tarni::qt {
namespace {

using platform::RunLoopObserver;

// Whether the next events say what a stretch of work began with.
std::atomic<bool> isLookingForFirst = false;

std::atomic<std::uint64_t> workDone = 0;
std::atomic<bool> seesAllWork = false;

// Only the GUI thread counts.
void countWork() {
  workDone.store(workDone.load(std::memory_order_relaxed) + 1, std::memory_order_release);
}

class LoopWatch {
 public:
  void start(RunLoopObserver* observer) {
    observer_ = observer;
    isWaiting_ = false;
    begin();
  }
  void stop() {
    observer_ = nullptr;
    isLookingForFirst = false;
  }

  void wait() {
    if (!observer_ || std::exchange(isWaiting_, true)) return;
    observer_->willWait(name_ = work());
    // Who is not told of the end of the wait takes the first event for it.
    begin();
  }
  void wake() {
    if (!observer_ || !std::exchange(isWaiting_, false)) return;
    observer_->didWake();
  }

  void note(const QObject& receiver, const QEvent& event) {
    wake();
    const std::lock_guard lock(mutex_);
    if (isOfAgent(receiver)) {
      sawAgent_ = true;
      return;
    }
    // A window passes the same event on to what it is meant for.
    if (type_ != QEvent::None && type_ != event.type()) return;
    type_ = event.type();
    std::strncpy(className_.data(), receiver.metaObject()->className(), className_.size() - 1);
    isLookingForFirst = receiver.isWindowType();
  }

  std::string work() {
    const std::lock_guard lock(mutex_);
    if (type_ == QEvent::None) return std::string(sawAgent_ ? platform::kMainQueueAlone : "");
    static const QMetaEnum types = QMetaEnum::fromType<QEvent::Type>();
    const char* const known = types.valueToKey(type_);
    return std::string(known ? known : "User") + ' ' + className_.data();
  }

 private:
  void begin() {
    const std::lock_guard lock(mutex_);
    type_ = QEvent::None;
    sawAgent_ = false;
    isLookingForFirst = true;
  }

  RunLoopObserver* observer_ = nullptr;
  bool isWaiting_ = false;
  std::string name_;

  std::mutex mutex_;  // guards what follows
  bool sawAgent_ = false;
  QEvent::Type type_ = QEvent::None;
  std::array<char, 128> className_{};  // of an object that may be gone when it is asked for
};

LoopWatch& loopWatch() {
  static auto* const only = new LoopWatch;
  return *only;
}

bool noteEvent(void** receiverAndEvent) {
  if (!isGuiThread()) return false;
  countWork();
  if (!isLookingForFirst.load(std::memory_order_relaxed)) return false;
  loopWatch().note(*static_cast<QObject*>(receiverAndEvent[0]),
                   *static_cast<QEvent*>(receiverAndEvent[1]));
  return false;
}

GPollFunc originalPoll = nullptr;

int pollAndTell(GPollFD* descriptors, unsigned int count, int timeout) {
  const bool isOfGui = isGuiThread();
  const bool isWait = timeout != 0 && isOfGui;
  if (isWait) loopWatch().wait();
  const int ready = originalPoll(descriptors, count, timeout);
  if (isOfGui) countWork();
  if (isWait) loopWatch().wake();
  return ready;
}

// The toolkit's signals come once in a round of GLib's loop, in which it need not wait; the other
// dispatcher has no place but them.
void hookDispatcher(QAbstractEventDispatcher& dispatcher) {
  if (dispatcher.inherits("QEventDispatcherGlib")) {
    GMainContext* const context =
        static_cast<QEventDispatcherGlibPrivate*>(QObjectPrivate::get(&dispatcher))->mainContext;
    originalPoll = g_main_context_get_poll_func(context);
    g_main_context_set_poll_func(context, pollAndTell);
    return;
  }
  QObject::connect(&dispatcher, &QAbstractEventDispatcher::aboutToBlock,
                   [] { loopWatch().wait(); });
  QObject::connect(&dispatcher, &QAbstractEventDispatcher::awake, [] { loopWatch().wake(); });
}

bool isOfToolkit(const QAbstractEventDispatcher& dispatcher) {
  return dispatcher.inherits("QEventDispatcherGlib") || dispatcher.inherits("QEventDispatcherUNIX");
}

void hookOnce() {
  static bool isHooked = false;
  if (std::exchange(isHooked, true)) return;
  // Makes what it asks: made by a thread that comes first, it would be told of its own move to this
  // one, wait for itself to be made, and this thread for both.
  isGuiThread();
  QInternal::registerCallback(QInternal::EventNotifyCallback, noteEvent);
  QAbstractEventDispatcher& dispatcher =
      *QAbstractEventDispatcher::instance(QCoreApplication::instance()->thread());
  hookDispatcher(dispatcher);
  seesAllWork = isOfToolkit(dispatcher);
}

}  // namespace

std::optional<std::uint64_t> workCount() {
  if (isGuiThread()) hookOnce();
  if (!seesAllWork) return std::nullopt;
  return workDone.load(std::memory_order_acquire);
}

std::string workSinceWake() {
  return loopWatch().work();
}

void watchLoops(RunLoopObserver* observer) {
  if (!observer) return loopWatch().stop();
  hookOnce();
  loopWatch().start(observer);
}

}  // namespace tarni::qt
