// The load of the processor's cores.
#include "agent/CPU/CPUInfoController.h"
#include "agent/CPU/CPULoadFilter.h"
#include "backends/posix/MachHost.h"
#include "tests/monitoring/Machine.h"

namespace tarni::test {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class Processors : public Machine {};

TEST_F(Processors, LoadIsTheShareOfTheTicksSinceTheSampleBefore) {
  host.ticks = {{{.user = 100, .system = 50, .idle = 1000, .nice = 7}, {}}};
  CPUInfoController controller;
  host.ticks = {{{.user = 130, .system = 60, .idle = 1040, .nice = 27}, {}}};
  const std::vector<CPULoad> loads = controller.calculateCPUUsage();
  ASSERT_THAT(loads, SizeIs(2));
  EXPECT_DOUBLE_EQ(loads[0].user, 30);
  EXPECT_DOUBLE_EQ(loads[0].system, 10);
  EXPECT_DOUBLE_EQ(loads[0].nice, 20);
  EXPECT_DOUBLE_EQ(loads[0].userWithoutNice, 37.5);
  EXPECT_DOUBLE_EQ(loads[0].systemWithoutNice, 12.5);
  EXPECT_DOUBLE_EQ(loads[0].total, 60);
  EXPECT_DOUBLE_EQ(loads[1].total, 0);

  // The next measurement counts from this one; no tick at all is no load.
  const CPULoad still = controller.calculateCPUUsage()[0];
  EXPECT_DOUBLE_EQ(still.total, 0);
  EXPECT_DOUBLE_EQ(still.userWithoutNice, 0);
}

TEST(CpuLoadFilter, AveragesItsWholeHistory) {
  CPULoadFilter filter;
  EXPECT_DOUBLE_EQ(filter.filterLoad({.system = 10, .user = 4}).system, 10);
  const CPULoad second = filter.filterLoad({.system = 30, .user = 2, .nice = 1});
  EXPECT_DOUBLE_EQ(second.system, 20);
  EXPECT_DOUBLE_EQ(second.user, 3);
  EXPECT_DOUBLE_EQ(second.total, 23.5);
  filter.appendRawCpuLoad({.system = 99});
  EXPECT_THAT(filter.rawCpuLoadHistory(), IsEmpty());
}

TEST(ProcMachHost, ReadsTheTicksOfThisMachinesCores) {
  posix::MachHost kernel;
  const auto ticks = kernel.hostProcessorInfo();
  ASSERT_TRUE(ticks);
  EXPECT_GE(ticks->size(), kernel.activeProcessorCount());
  EXPECT_GT(ticks->front().idle + ticks->front().user, 0U);
  EXPECT_FALSE(posix::MachHost("/nonexistent").hostProcessorInfo());
}

}  // namespace
}  // namespace tarni::test
