// Costs: what the program's main thread had to do, and what the process used. The channel's
// observer of the run loop (MainWatch) measures; who acts keeps a CostMeter meanwhile. Main thread,
// but for what says otherwise.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "agent/session/protocol/SessionError.h"
#include "platform/UIKit/RunLoopObserver.h"

namespace tarni::session {

using Clock = std::chrono::steady_clock;

double seconds(Clock::duration duration);

// What a stretch of time cost. Main thread busy in seconds.
struct BusyTime {
  double busy = 0;
  double longest = 0;
  std::string beganWith;  // what the longest stretch began with

  void add(Clock::duration stretch, std::string_view with);
};

class MainWatch : public platform::RunLoopObserver {
 public:
  static MainWatch& sharedInstance();

  // Begins to observe.
  void start();
  // Called at the end of each stretch in which the main thread did something.
  void setOnRest(std::function<void()> onRest) { onRest_ = std::move(onRest); }

  // When the main thread was last done with something of the program's, which is not what the agent
  // does by itself; and what that was.
  Clock::time_point lastActivity() const { return lastActivity_; }
  const std::string& lastWork() const { return lastWork_; }
  // Since the start of observing.
  const BusyTime& total() const { return total_; }
  // How long the main thread has been busy without a break; zero while it waits. Any thread.
  Clock::duration busyFor() const;

  void didWake() noexcept override;
  void willWait(std::string_view beganWith) noexcept override;

 private:
  friend class CostMeter;

  std::function<void()> onRest_;
  std::atomic<Clock::rep> wokeAt_ = 0;  // zero while it waits
  Clock::time_point lastActivity_ = Clock::now();
  std::string lastWork_;
  BusyTime total_;
  std::vector<class CostMeter*> meters_;
};

// Measures while it lives.
class CostMeter {
 public:
  CostMeter();
  CostMeter(const CostMeter&) = delete;
  CostMeter& operator=(const CostMeter&) = delete;
  ~CostMeter();

  // Until now: {busyMs, longestMs, beganWith, cpuMs, memoryBytes: {before, after}}. What is not
  // known is null.
  Json costs() const;

 private:
  friend class MainWatch;

  Clock::time_point begin_ = Clock::now();
  double cpuBefore_;
  Json memoryBefore_;
  BusyTime time_;
};

// The same since the channel opened (the processor's time since the process began), with the memory
// of now.
Json costsSinceStart();

}  // namespace tarni::session
