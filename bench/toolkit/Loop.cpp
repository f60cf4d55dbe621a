#include "bench/toolkit/Loop.h"

#include <QtCore/QCoreApplication>
#include <exception>

namespace tarni::bench {

void finish(platform::Task<void> work) {
  bool ended = false;
  platform::spawn(std::move(work), [&](const std::exception_ptr&) { ended = true; });
  while (!ended) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void letItShow(const std::function<bool()>& isShown) {
  while (!isShown()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
}

}  // namespace tarni::bench
