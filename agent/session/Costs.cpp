#include "agent/session/Costs.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>

#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni::session {
namespace {

double milliseconds(double seconds) {
  return static_cast<double>(static_cast<long>(seconds * 1e6)) / 1e3;
}

Json asMembers(const BusyTime& time) {
  if (!MainWatch::sharedInstance().observes()) {
    return {{"busyMs", nullptr}, {"longestMs", nullptr}, {"beganWith", nullptr}};
  }
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
  observes_ = platform::current().application->setRunLoopObserver(this);
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

CostMeter::CostMeter() : cpuBefore_(processSeconds()), memoryBefore_(processMemory()) {
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
  costs["cpuMs"] = milliseconds(processSeconds() - cpuBefore_);
  costs["memoryBytes"] = {{"before", memoryBefore_}, {"after", processMemory()}};
  return costs;
}

Json costsSinceStart() {
  Json costs = asMembers(MainWatch::sharedInstance().total());
  costs["cpuMs"] = milliseconds(processSeconds());
  costs["memoryBytes"] = processMemory();
  return costs;
}

double processSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

Json processMemory() {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen("/proc/self/statm", "re"),
                                                             std::fclose);
  long total = 0;
  long resident = 0;
  if (!file || std::fscanf(file.get(), "%ld %ld", &total, &resident) != 2) return nullptr;
  return resident * sysconf(_SC_PAGESIZE);
}

}  // namespace tarni::session
