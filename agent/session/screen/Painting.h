// Painting: tells clients which windows were painted, from when the first of them asks until the
// last has gone or had enough. Main thread.
#pragma once

#include <set>

#include "agent/session/calls/Audience.h"
#include "agent/session/screen/Elements.h"
#include "platform/UIKit/PaintObserver.h"

namespace tarni::session {

class Painting : public platform::PaintObserver {
 public:
  static Painting& sharedInstance();

  // False when the platform does not tell what is painted.
  bool start(const std::shared_ptr<const Notify>& client);
  void stop(const std::shared_ptr<const Notify>& client);

  void paints(const platform::UIWindowRef& window) noexcept override;

 private:
  void tellSoon();
  void tell();

  Audience audience_;
  std::set<Handle> painted_;
  bool hasOpened_ = false;
  bool isPending_ = false;
  Clock::time_point lastTold_;
};

}  // namespace tarni::session
