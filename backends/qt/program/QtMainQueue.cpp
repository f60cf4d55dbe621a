#include "backends/qt/program/QtMainQueue.h"

#include <QtCore/QCoreApplication>

#include "backends/qt/program/QtProgram.h"

namespace tarni::qt {

QtMainQueue& QtMainQueue::shared() {
  static auto* const queue = new QtMainQueue;
  return *queue;
}

// The end of a loop is not a reason to close: a program may run its loop a second time.
QtMainQueue::QtMainQueue() {
  qAddPostRoutine([] { shared().close(); });
}

bool QtMainQueue::isMainThread() const {
  return isGuiThread();
}

void QtMainQueue::wake() noexcept {
  postToProgram([this] { drain(); });
}

}  // namespace tarni::qt
