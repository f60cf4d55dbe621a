#include "host/player/Played.h"

#include <algorithm>

#include "host/session/Step.h"

namespace tarni::host {

void StepCosts::add(const Json& answer) {
  const Json& costs = objectIn(answer, "costs");
  busyMs += numberIn(costs, "busyMs");
  longestMs = std::max(longestMs, numberIn(costs, "longestMs"));
  cpuMs += numberIn(costs, "cpuMs");
  const Json& memory = objectIn(costs, "memoryBytes");
  if (memory.contains("after")) memoryBytes = numberIn(memory, "after");
}

double secondsOf(std::span<const Played> play) {
  double seconds = 0;
  for (const auto& played : play) seconds = std::max(seconds, played.began + played.seconds);
  return seconds;
}

}  // namespace tarni::host
