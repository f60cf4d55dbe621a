#include "host/player/Played.h"

#include <algorithm>

#include "host/session/Step.h"

namespace tarni::host {

void StepCosts::add(const Json& answer) {
  const Json& costs = objectIn(answer, "costs");
  busyMs += memberAsNumber(costs, "busyMs");
  longestMs = std::max(longestMs, memberAsNumber(costs, "longestMs"));
  cpuMs += memberAsNumber(costs, "cpuMs");
  const Json& memory = objectIn(costs, "memoryBytes");
  if (memory.contains("after")) memoryBytes = memberAsNumber(memory, "after");
}

}  // namespace tarni::host
