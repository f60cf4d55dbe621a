#include "agent/core/state/GlobalVars.h"

#include <utility>

namespace tarni {

GlobalVars& GlobalVars::sharedInstance() {
  static auto* const shared = new GlobalVars;
  return *shared;
}

GlobalVars::Text GlobalVars::take_hybridRecordedSteps() {
  const std::lock_guard lock(mutex_);
  return std::exchange(hybridRecordedSteps_, std::nullopt);
}

}  // namespace tarni
