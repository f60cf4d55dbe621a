#include "host/webdriver/Starter.h"

#include <future>

namespace tarni::host::webdriver {

Starter::Starter() : thread_([this] { work(); }) {}

Starter::~Starter() {
  {
    const std::lock_guard lock(mutex_);
    isEnding_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

std::unique_ptr<ToolProcess> Starter::start(const std::vector<std::string>& words) {
  std::packaged_task<std::unique_ptr<ToolProcess>()> task(
      [&] { return std::make_unique<ToolProcess>(words); });
  auto result = task.get_future();
  {
    const std::lock_guard lock(mutex_);
    jobs_.emplace([&task] { task(); });
  }
  changed_.notify_one();
  return result.get();
}

void Starter::work() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return isEnding_ || !jobs_.empty(); });
    if (jobs_.empty()) return;
    const auto job = std::move(jobs_.front());
    jobs_.pop();
    lock.unlock();
    job();
    lock.lock();
  }
}

}  // namespace tarni::host::webdriver
