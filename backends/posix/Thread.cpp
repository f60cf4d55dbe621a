#include "backends/posix/Thread.h"

#include <pthread.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <thread>
#include <utility>

namespace tarni::posix {
namespace {

// The new thread inherits the mask of the one that starts it.
class AllSignalsBlocked {
 public:
  AllSignalsBlocked() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~AllSignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  AllSignalsBlocked(const AllSignalsBlocked&) = delete;
  AllSignalsBlocked& operator=(const AllSignalsBlocked&) = delete;

 private:
  sigset_t before_;
};

void raiseNiceness(int niceness) {
  const auto thread = static_cast<id_t>(gettid());
  setpriority(PRIO_PROCESS, thread, getpriority(PRIO_PROCESS, thread) + niceness);
}

}  // namespace

void startThread(const char* name, int niceness, std::function<void()> body) {
  const AllSignalsBlocked blocked;
  std::thread([name, niceness, body = std::move(body)] {
    pthread_setname_np(pthread_self(), name);
    if (niceness > 0) raiseNiceness(niceness);
    body();
  }).detach();
}

}  // namespace tarni::posix
