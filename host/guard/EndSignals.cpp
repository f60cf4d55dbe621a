#include "host/guard/EndSignals.h"

#include <initializer_list>

namespace tarni::host {

sigset_t endSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, number);
  return signals;
}

AwaitedSignals::AwaitedSignals(const sigset_t& signals) : signals_(signals) {
  pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
}

int AwaitedSignals::await() const {
  int number = 0;
  sigwait(&signals_, &number);
  return number;
}

}  // namespace tarni::host
