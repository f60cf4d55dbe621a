// Recording: tells clients what a person does, step by step, from when the first of them asks until
// the last has gone or had enough. An element of a page is told of by the page, later than those of
// windows: what was done after it waits, so that steps come in the order of the acts. Main thread.
#pragma once

#include <deque>
#include <memory>
#include <optional>

#include "agent/acts/Acts.h"
#include "agent/session/calls/Audience.h"

namespace tarni::session {

class Recording {
 public:
  static Recording& sharedInstance();

  // False when the platform does not tell what a person does. `checkKey` as Acts::setCheckKey has
  // it; the one that was named last counts for all clients.
  bool start(const std::shared_ptr<const Notify>& client, const std::string& checkKey);
  // The client has been sent every step when this returns.
  void stop(const std::shared_ptr<const Notify>& client);
  // Every client has.
  void finish();

 private:
  Recording();
  Portrait portray(const platform::UIViewRef& view, const std::optional<platform::CGPoint>& place);
  void complete(PortraitText& portrait);
  void take(const Act& act);
  // Up to the first act that is not complete; all of them when nothing is waited for any more.
  void tell(bool waits);

  Acts acts_;
  Audience audience_;
  std::deque<Act> waiting_;
  Act click_;  // the latest that was told
};

}  // namespace tarni::session
