#include "host/grid/Together.h"

#include <stdexcept>

namespace tarni::host::grid {

namespace {

sigset_t endOfUsOrOfOne() {
  sigset_t signals = endSignals();
  sigaddset(&signals, SIGCHLD);
  return signals;
}

}  // namespace

Together::Together() : signals_(endOfUsOrOfOne()) {}

Together::~Together() {
  while (!members_.empty()) members_.pop_back();
}

ChildProcess& Together::add(std::string name, std::unique_ptr<ChildProcess> process) {
  members_.push_back({std::move(name), std::move(process)});
  return *members_.back().process;
}

void Together::wait() {
  do {
    requireAll();
  } while (signals_.await() == SIGCHLD);
}

void Together::requireAll() {
  for (const auto& [name, process] : members_) {
    if (!process->hasEnded({})) continue;
    const auto said = process->lastOutput();
    throw std::runtime_error(name + " has ended" + (said.empty() ? "" : "; it said:\n" + said));
  }
}

}  // namespace tarni::host::grid
