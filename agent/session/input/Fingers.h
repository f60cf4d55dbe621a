// Fingers: those that a client has on the screen. What they do is not an act of a person and is not
// recorded. Main thread.
#pragma once

#include <map>
#include <vector>

#include "platform/Task.h"
#include "platform/UIKit/UIEvent.h"

namespace tarni::session {

class Fingers {
 public:
  struct Spot {
    platform::UIWindowRef window;
    platform::CGPoint point;  // in its coordinates
  };
  // By the numbers that the client gives to its fingers.
  using Spots = std::map<long, Spot>;

  // Each is one event, in which all of them do so together. A finger stays in the window in which
  // it went down, and one that is as asked for already stays so.
  platform::Task<void> down(Spots spots);
  // Throws SessionError (invalid argument) for one that is not down.
  platform::Task<void> move(Spots spots);
  platform::Task<void> up(std::vector<long> numbers);

  // Takes all of them off, so that nothing comes of it.
  platform::Task<void> cancel();

 private:
  platform::UITouchRef touchOf(long number) const;
  // Shows the application all fingers; the others rest.
  platform::Task<void> show(std::vector<long> changed, platform::UITouchPhase phase);

  std::map<long, platform::UITouchRef> touches_;
};

}  // namespace tarni::session
