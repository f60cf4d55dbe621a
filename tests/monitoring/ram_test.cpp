// Memory figures.
#include "agent/RAM/RAMInfoController.h"
#include "backends/posix/MachHost.h"
#include "tests/monitoring/Machine.h"

namespace tarni::test {
namespace {

class Ram : public Machine {};

TEST_F(Ram, UsageCountsPagesOf4096BytesAndTakesTheRestForFree) {
  EXPECT_FALSE(RAMInfoController().getRAMUsage());
  host.statistics = {.activePages = 1000,
                     .inactivePages = 500,
                     .wiredPages = 250,
                     .pageIns = 1,
                     .pageOuts = 2,
                     .faults = 3};
  const RAMUsage usage = RAMInfoController().getRAMUsage().value();
  EXPECT_EQ(usage.usedRam, 7'168'000U);
  EXPECT_EQ(usage.activeRam, 4'096'000U);
  EXPECT_EQ(usage.inactiveRam, 2'048'000U);
  EXPECT_EQ(usage.wiredRam, 1'024'000U);
  EXPECT_EQ(usage.freeRam, 10'000'000U - 7'168'000U);
  EXPECT_EQ(usage.pageIns, 1U);
  EXPECT_EQ(usage.pageOuts, 2U);
  EXPECT_EQ(usage.pageFaults, 3U);
}

TEST(ProcMachHost, ReadsTheMemoryOfThisMachine) {
  posix::MachHost kernel;
  const auto statistics = kernel.hostStatistics64();
  ASSERT_TRUE(statistics);
  EXPECT_GT(statistics->activePages + statistics->inactivePages, 0U);
  EXPECT_GT(statistics->faults, 0U);
  EXPECT_GT(kernel.physicalMemory(), std::uint64_t{1} << 20);
  EXPECT_FALSE(posix::MachHost("/nonexistent").hostStatistics64());
}

}  // namespace
}  // namespace tarni::test
