// Audience: the clients that asked to be told of something. Who has gone without a word is noticed
// with the next telling. Main thread.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "agent/session/calls/Call.h"

namespace tarni::session {

class Audience {
 public:
  void add(const std::shared_ptr<const Notify>& client) { clients_.push_back(client); }
  void remove(const std::shared_ptr<const Notify>& client) {
    std::erase_if(clients_, [&](const auto& one) { return one.lock() == client; });
  }
  // Whether nobody is left.
  bool isEmpty() {
    std::erase_if(clients_, [](const auto& one) { return one.expired(); });
    return clients_.empty();
  }
  void tell(const std::string& line) const {
    for (const auto& weak : clients_) {
      if (const auto client = weak.lock()) (*client)(line);
    }
  }

 private:
  std::vector<std::weak_ptr<const Notify>> clients_;
};

}  // namespace tarni::session
