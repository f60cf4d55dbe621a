// Starter: one thread that makes other calls of this tool and lives as long as the server, since
// they end with the thread that made them. Any thread.
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <queue>
#include <string>
#include <thread>
#include <vector>

#include "host/launch/ToolProcess.h"

namespace tarni::host::webdriver {

class Starter {
 public:
  Starter();
  Starter(const Starter&) = delete;
  Starter& operator=(const Starter&) = delete;
  ~Starter();

  // As ToolProcess's constructor.
  std::unique_ptr<ToolProcess> start(const std::vector<std::string>& words);

 private:
  void work();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::queue<std::function<void()>> jobs_;
  bool isEnding_ = false;
  std::thread thread_;
};

}  // namespace tarni::host::webdriver
