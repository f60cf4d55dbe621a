// Waits: the open waits of all clients, woken when the main thread has handled something. They are
// looked at on main when it comes to rest, at most every 10 ms and never while nothing happened.
// Pages, which do not tell, are asked by who waits for something in them. Main thread.
#pragma once

#include <functional>
#include <list>

#include "agent/session/calls/Call.h"
#include "agent/session/calls/Costs.h"

namespace tarni::session {

class Waits {
 public:
  static Waits& sharedInstance();
  void start();

  // Parks the call until `holds` answers true, and answers true; false once the time (milliseconds)
  // is over. It is asked at once, and after that whenever something has happened.
  platform::Task<bool> until(CallRef call, std::function<bool()> holds, double timeout);
  // The same until the program has handled nothing for so many milliseconds.
  platform::Task<bool> untilRest(CallRef call, double quiet, double timeout);

 private:
  struct Wait {
    CallRef call;
    std::function<bool()> holds;
    bool isMet = false;
    bool isOver = false;
    std::exception_ptr failure = {};
  };

  platform::Task<bool> parked(std::shared_ptr<Wait> wait, double timeout);
  void somethingHappened();
  void look();
  static void lookAtRest(const std::weak_ptr<Wait>& weak, double quietSeconds);

  std::list<std::shared_ptr<Wait>> waits_;
  Clock::time_point lastLook_;
  bool isLookPending_ = false;
  bool isLooking_ = false;
};

}  // namespace tarni::session
