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
  if (clients_.empty() && !acts_.start()) return false;
  clients_.push_back(client);
  return true;
}

void Recording::stop(const std::shared_ptr<const Notify>& client) {
  acts_.finish();
  std::erase_if(clients_, [&](const auto& one) { return one.expired() || one.lock() == client; });
  if (clients_.empty()) acts_.stop();
}

void Recording::finish() {
  acts_.finish();
}

// Who has gone without a word is noticed with the next step.
void Recording::tell(const Act& act) {
  std::erase_if(clients_, [](const auto& one) { return one.expired(); });
  if (clients_.empty()) return acts_.stop();
  const std::string line = notification("record.step", stepOf(act));
  for (const auto& weak : clients_) {
    if (const auto client = weak.lock()) (*client)(line);
  }
}

}  // namespace tarni::session
