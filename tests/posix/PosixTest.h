// PosixTest: a platform of queues and a log, for tests of what runs on them.
#pragma once

#include <gtest/gtest.h>

#include "platform/Platform.h"
#include "tests/posix/Immortal.h"
#include "tests/posix/LineLog.h"
#include "tests/posix/LoopMainQueue.h"

namespace tarni::test {

// The dispatch that the program's cases are about.
platform::Dispatch& makeDispatch(platform::MainQueue& mainQueue);

// What threads of a case that failed may still use is never destroyed.
class PosixTest : public testing::Test {
 protected:
  PosixTest() {
    platform::Platform platform;
    platform.log = &log_;
    platform.dispatch = &dispatch_;
    platform::install(platform);
  }

  LineLog& log_ = immortal<LineLog>();
  LoopMainQueue& mainQueue_ = immortal<LoopMainQueue>();
  platform::Dispatch& dispatch_ = makeDispatch(mainQueue_);
};

}  // namespace tarni::test
