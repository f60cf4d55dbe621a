#include "host/http/ThreadPerConnection.h"

#include <system_error>
#include <thread>

namespace tarni::host::http {

namespace {

constexpr std::size_t kMostConnections = 256;

}  // namespace

void ThreadPerConnection::enqueue(std::function<void()> serve) {
  std::unique_lock lock(mutex_);
  ended_.wait(lock, [this] { return count_ < kMostConnections; });
  ++count_;
  lock.unlock();
  const auto run = [this](const std::function<void()>& connection) {
    connection();
    const std::lock_guard guard(mutex_);
    --count_;
    ended_.notify_all();
  };
  try {
    std::thread(run, serve).detach();
  } catch (const std::system_error&) {
    run(serve);  // the system gives no more threads
  }
}

void ThreadPerConnection::shutdown() {
  std::unique_lock lock(mutex_);
  ended_.wait(lock, [this] { return count_ == 0; });
}

}  // namespace tarni::host::http
