#include <gtest/gtest.h>

#include <vector>

#include "backends/posix/EventRecord.h"
#include "backends/posix/TouchRecord.h"

namespace tarni::test {
namespace {

TEST(EventRecordTest, TouchesKeepTheirOrderAndComeOnce) {
  posix::EventRecord event;
  const auto first = std::make_shared<posix::TouchRecord>();
  const auto second = std::make_shared<posix::TouchRecord>();
  for (const auto& touch : {first, second, first}) event._addTouch(touch, false);
  EXPECT_EQ(event.allTouches(), (std::vector<platform::UITouchRef>{first, second}));
  event._clearTouches();
  EXPECT_TRUE(event.allTouches().empty());
}

}  // namespace
}  // namespace tarni::test
