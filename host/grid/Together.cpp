#include "host/grid/Together.h"

#include <pthread.h>

#include <stdexcept>

namespace tarni::host::grid {

Together::Together() {
  sigemptyset(&signals_);
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGCHLD}) sigaddset(&signals_, number);
  pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
}

Together::~Together() {
  while (!members_.empty()) members_.pop_back();
}

ChildProcess& Together::add(std::string name, std::unique_ptr<ChildProcess> process) {
  members_.push_back({std::move(name), std::move(process)});
  return *members_.back().process;
}

void Together::wait() {
  int number = SIGCHLD;
  while (number == SIGCHLD) {
    requireAll();
    sigwait(&signals_, &number);
  }
}

void Together::requireAll() {
  for (const auto& [name, process] : members_) {
    if (!process->hasEnded({})) continue;
    const auto said = process->lastOutput();
    throw std::runtime_error(name + " has ended" + (said.empty() ? "" : "; it said:\n" + said));
  }
}

}  // namespace tarni::host::grid
