#include "agent/session/calls/Costs.h"

#include <algorithm>

#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni::session {
namespace {

double milliseconds(double seconds) {
  return static_cast<double>(static_cast<long>(seconds * 1e6)) / 1e3;
}

double processorTime() {
  return platform::current().processInfo->processorTime();
}

// Null where the system does not say.
Json residentMemory() {
  const auto bytes = platform::current().processInfo->residentMemory();
  return bytes ? Json(*bytes) : Json();
}

Json asMembers(const BusyTime& time) {
  return {{"busyMs", milliseconds(time.busy)},
          {"longestMs", milliseconds(time.longest)},
          {"beganWith", time.beganWith}};
}

}  // namespace

double seconds(Clock::duration duration) {
  return std::chrono::duration<double>(duration).count();
}

void BusyTime::add(Clock::duration stretch, std::string_view with) {
  const double length = seconds(stretch);
  busy += length;
  if (length <= longest) return;
  longest = length;
  beganWith = with;
}

MainWatch& MainWatch::sharedInstance() {
  static auto* const shared = new MainWatch;
  return *shared;
}

void MainWatch::start() {
  platform::current().application->setRunLoopObserver(this);
}

Clock::duration MainWatch::busyFor() const {
  const Clock::rep since = wokeAt_;
  if (since == 0) return Clock::duration::zero();
  return Clock::now() - Clock::time_point(Clock::duration(since));
}

void MainWatch::didWake() noexcept {
  wokeAt_ = Clock::now().time_since_epoch().count();
}

void MainWatch::willWait(std::string_view beganWith) noexcept {
  platform::runGuarded("session channel", [this, beganWith] {
    const Clock::time_point now = Clock::now();
    const Clock::rep since = wokeAt_.exchange(0);
    if (since == 0) return;
    const Clock::time_point woke{Clock::duration(since)};
    if (beganWith != platform::kMainQueueAlone) {
      lastActivity_ = now;
      lastWork_ = beganWith;
    }
    total_.add(now - woke, beganWith);
    for (CostMeter* const meter : meters_) {
      meter->time_.add(now - std::max(woke, meter->begin_), beganWith);
    }
    if (onRest_) onRest_();
  });
}

CostMeter::CostMeter() : cpuBefore_(processorTime()), memoryBefore_(residentMemory()) {
  MainWatch::sharedInstance().meters_.push_back(this);
}

CostMeter::~CostMeter() {
  std::erase(MainWatch::sharedInstance().meters_, this);
}

// The stretch in which it is asked is not over: it began with whatever the request did.
Json CostMeter::costs() const {
  BusyTime time = time_;
  time.add(std::min(MainWatch::sharedInstance().busyFor(), Clock::now() - begin_), "the request");
  Json costs = asMembers(time);
  costs["cpuMs"] = milliseconds(processorTime() - cpuBefore_);
  costs["memoryBytes"] = {{"before", memoryBefore_}, {"after", residentMemory()}};
  return costs;
}

Json costsSinceStart() {
  Json costs = asMembers(MainWatch::sharedInstance().total());
  costs["cpuMs"] = milliseconds(processorTime());
  costs["memoryBytes"] = residentMemory();
  return costs;
}

}  // namespace tarni::session
