// Memory figures, device models and the small helpers beside them.
#include "agent/RAM/AMUtils.h"
#include "agent/RAM/HardcodedDeviceData.h"
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

TEST(DeviceData, ModelsAreFoundByTheirExactIdentifier) {
  HardcodedDeviceData data;
  const auto nameOf = [&data](std::string_view identifier) {
    data.setHwMachine(identifier);
    return data.getiDeviceName();
  };
  EXPECT_EQ(nameOf("iPhone5,3"), "iPhone 5C");
  EXPECT_EQ(nameOf("iPhone5,4"), "iPhone 5C");
  EXPECT_EQ(nameOf("iPad2,3"), "iPad 2 (GSM)");
  EXPECT_EQ(nameOf("iPad2,4"), "iPad 2 (GSM)");
  for (const std::string_view unlisted : {"iPhone99,1", "iphone5,3", "iPhone5", ""}) {
    EXPECT_EQ(nameOf(unlisted), "Unknown") << unlisted;
    EXPECT_EQ(data.iDevice(), 41);
  }
  EXPECT_EQ(data.getAspectRatio(), "0:0");
}

class Helpers : public Machine {};

TEST_F(Helpers, SystemControlValuesAreReadInTheirOwnWidth) {
  host.set("hw.memsize", std::uint64_t{1} << 40);
  host.set("hw.ncpu", std::uint32_t{6});
  host.set("hw.machine", "iPhone6,1");
  EXPECT_EQ(AMUtils::getSysCtl64WithSpecifier("hw.memsize"), std::uint64_t{1} << 40);
  EXPECT_EQ(AMUtils::getSysCtlHw(3), 6U);
  EXPECT_EQ(AMUtils::getSysCtlHw(4711), 0U);
  EXPECT_EQ(AMUtils::getSysCtlChrWithSpecifier("hw.machine"), "iPhone6,1");
  EXPECT_EQ(AMUtils::getSysCtlChrWithSpecifier("hw.nothing"), "");
  std::uint32_t cores = 0;
  EXPECT_EQ(AMUtils::getSysCtlPtrWithSpecifier("hw.memsize", &cores, sizeof cores), 0U);
  EXPECT_EQ(AMUtils::getSysCtlPtrWithSpecifier("hw.ncpu", &cores, sizeof cores), 4U);
  EXPECT_EQ(cores, 6U);
}

}  // namespace
}  // namespace tarni::test
