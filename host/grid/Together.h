// Together: processes that make sense together only: all of them end with the first one, with a
// signal, or with their owner. Made once, on the main thread, before other threads are.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/guard/EndSignals.h"
#include "host/launch/ChildProcess.h"

namespace tarni::host::grid {

class Together {
 public:
  Together();
  Together(const Together&) = delete;
  Together& operator=(const Together&) = delete;
  // Ends the last one first.
  ~Together();

  ChildProcess& add(std::string name, std::unique_ptr<ChildProcess> process);
  // Until a signal asks for the end. Throws std::runtime_error when one has ended by itself.
  void wait();

 private:
  struct Member {
    std::string name;
    std::unique_ptr<ChildProcess> process;
  };
  void requireAll();

  AwaitedSignals signals_;
  std::vector<Member> members_;
};

}  // namespace tarni::host::grid
