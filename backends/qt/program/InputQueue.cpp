#include "backends/qt/program/InputQueue.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <atomic>
#include <exception>
#include <utility>

#include "backends/qt/program/QtProgram.h"
#include "platform/Foundation/Guarded.h"

namespace tarni::qt {
namespace {

using Interface = QWindowSystemInterfacePrivate;

// Longer than a program is busy as a rule: only an event that never arrives takes that long.
constexpr double kLostEventSeconds = 5;

// Stands in the queue of the window system's events.
class InputWork : public Interface::WindowSystemEvent {
 public:
  // A number that Qt does not use.
  static constexpr auto kType = static_cast<Interface::EventType>(Interface::UserInputEvent | 0x7f);

  explicit InputWork(std::function<void()> work)
      : WindowSystemEvent(kType), work_(std::move(work)) {}

  void run() const { platform::runGuarded("input", work_); }

 private:
  std::function<void()> work_;
};

std::atomic<bool> served = false;
std::optional<Doer> atWork;

void performNow(const std::function<void()>& action, Doer doer,
                std::exception_ptr& failure) noexcept {
  const auto before = std::exchange(atWork, doer);
  try {
    action();
  } catch (...) {
    failure = std::current_exception();
  }
  atWork = before;
}

}  // namespace

void postInput(std::function<void()> work) {
  auto* const dispatcher =
      served ? QAbstractEventDispatcher::instance(QCoreApplication::instance()->thread()) : nullptr;
  if (!dispatcher) return postToProgram(std::move(work));
  Interface::windowSystemEventQueue.append(new InputWork(std::move(work)));
  dispatcher->wakeUp();
}

platform::Task<void> performAsInput(std::function<void()> work, Doer doer) {
  return performAsInput(std::vector{std::move(work)}, doer);
}

platform::Task<void> performAsInput(std::vector<std::function<void()>> works, Doer doer) {
  const auto suspension = std::make_shared<Suspension>();
  const auto failure = std::make_shared<std::exception_ptr>();
  Pause pause{suspension,
              [suspension, failure, doer, works = std::move(works)] {
                for (std::size_t at = 0; at < works.size(); ++at) {
                  const bool isLast = at + 1 == works.size();
                  postInput([suspension, failure, doer, work = works[at], isLast] {
                    if (isLast) suspension->resumeLater();
                    performNow(work, doer, *failure);
                  });
                }
              },
              kLostEventSeconds};
  co_await pause;
  if (*failure) std::rethrow_exception(*failure);
}

std::optional<Doer> doerAtWork() {
  return atWork;
}

void serveInputQueue(bool isServed) {
  served = isServed;
}

bool runInputWork(const Interface::WindowSystemEvent& event) {
  if (event.type != InputWork::kType) return false;
  static_cast<const InputWork&>(event).run();
  return true;
}

}  // namespace tarni::qt
