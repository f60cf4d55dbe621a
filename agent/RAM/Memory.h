// Memory: a diagnostic that a developer calls by hand; no command reaches it. Any thread.
#pragma once

namespace tarni {

class Memory {
 public:
  // Logs the memory in use and free, and the load of each core.
  void showMemoryAndCpuStats() const;
};

}  // namespace tarni
