// EndSignals: those by which a person or the system asks the tool for its end.
#pragma once

#include <signal.h>

namespace tarni::host {

sigset_t endSignals();

// Keeps signals from the thread that makes it and from those that it makes from then on, so that
// one of them can wait for a signal. For the rest of the process.
class AwaitedSignals {
 public:
  explicit AwaitedSignals(const sigset_t& signals = endSignals());

  // Until one comes; answers its number.
  int await() const;

 private:
  sigset_t signals_;
};

}  // namespace tarni::host
