#include "agent/session/recording/Recording.h"

#include "agent/session/protocol/JsonRpc.h"
#include "agent/session/recording/Steps.h"

namespace tarni::session {

Recording& Recording::sharedInstance() {
  static auto* const shared = new Recording;
  return *shared;
}

Recording::Recording() : acts_(portraitOf, [this](const Act& act) { tell(act); }) {}

bool Recording::start(const std::shared_ptr<const Notify>& client) {
  stop(client);
  if (audience_.isEmpty() && !acts_.start()) return false;
  audience_.add(client);
  return true;
}

void Recording::stop(const std::shared_ptr<const Notify>& client) {
  acts_.finish();
  audience_.remove(client);
  if (audience_.isEmpty()) acts_.stop();
}

void Recording::finish() {
  acts_.finish();
}

void Recording::tell(const Act& act) {
  if (audience_.isEmpty()) return acts_.stop();
  audience_.tell(notification("record.step", stepOf(act)));
}

}  // namespace tarni::session
