// ThreadPerConnection: gives every connection a thread of its own while it lives, since one that
// says nothing would hold up those behind it in a pool. Above the bound the next one waits for
// another to end.
#pragma once

#include <httplib.h>

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>

namespace tarni::host::http {

class ThreadPerConnection : public httplib::TaskQueue {
 public:
  // `port` is the one of the server.
  explicit ThreadPerConnection(std::uint16_t port) : port_(port) {}

  void enqueue(std::function<void()> serve) override;
  // Waits for what is being answered; connections that say nothing end at once.
  void shutdown() override;

 private:
  const std::uint16_t port_;
  std::mutex mutex_;
  std::condition_variable ended_;
  std::size_t count_ = 0;
};

}  // namespace tarni::host::http
