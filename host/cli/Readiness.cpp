#include "host/cli/Readiness.h"

#include <iomanip>
#include <iostream>
#include <stdexcept>

#include "host/wire/Ports.h"

namespace tarni::host {

namespace {

constexpr std::chrono::seconds kTimeout{10};

bool isTaken(std::uint16_t port, const std::string& network) {
  const auto use = portUse(port, network);
  return use == PortUse::Listening || use == PortUse::Held;
}

}  // namespace

void refuseTakenPorts(const std::string& networkOf) {
  for (const auto port : {kRecorderPort, kPlaybackPort}) {
    if (isTaken(port, networkOf)) {
      throw std::runtime_error("port " + std::to_string(port) +
                               " is taken, likely by another program with the agent: end that one "
                               "or use --isolated");
    }
  }
}

bool Readiness::check(pid_t pid, bool isExpected) {
  const auto network = std::to_string(pid);
  const auto waited = std::chrono::duration<double>(Clock::now() - start_);
  isReady_ = isTaken(kPlaybackPort, network) && isTaken(kRecorderPort, network);
  if (isReady_) {
    std::cerr << "tarni: ready: ports " << kRecorderPort << " and " << kPlaybackPort << ", "
              << std::fixed << std::setprecision(1) << waited.count() << " s" << hint_ << '\n';
    return true;
  }
  if (waited < kTimeout) return false;
  if (!isExpected) return true;
  std::cerr << "tarni: the agent's ports are not open after " << kTimeout.count()
            << " s: was it loaded, and does the program run its event loop?\n";
  return true;
}

}  // namespace tarni::host
