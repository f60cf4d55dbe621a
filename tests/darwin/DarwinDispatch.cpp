#include "backends/ios/system/Dispatch.h"
#include "tests/posix/PosixTest.h"

namespace tarni::test {

platform::Dispatch& makeDispatch(platform::MainQueue& mainQueue) {
  return immortal<ios::Dispatch>(mainQueue);
}

}  // namespace tarni::test
