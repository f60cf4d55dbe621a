#include "backends/posix/Dispatch.h"

#include "tests/posix/PosixTest.h"

namespace tarni::test {

platform::Dispatch& makeDispatch(platform::MainQueue& mainQueue) {
  return immortal<posix::Dispatch>(mainQueue);
}

}  // namespace tarni::test
