#include <gtest/gtest.h>

#include <unistd.h>

#include <string>

#include "backends/ios/system/MachHost.h"
#include "tests/darwin/Mach.h"

namespace tarni::test {
namespace {

TEST(DarwinMachHost, ReadsWhatTheKernelGivesAndGivesItBack) {
  ios::MachHost host;
  const auto cores = host.hostProcessorInfo();
  ASSERT_TRUE(cores);
  EXPECT_EQ(cores->size(), host.activeProcessorCount());
  EXPECT_GT(cores->front().user + cores->front().idle, 0U);
  EXPECT_EQ(wordsKept, 0U);

  const auto pages = host.hostStatistics64();
  ASSERT_TRUE(pages);
  EXPECT_GT(pages->activePages, 0U);
  EXPECT_GT(pages->faults, 0U);
  EXPECT_EQ(hostReferences, 1);

  EXPECT_EQ(host.physicalMemory(), static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) *
                                       static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)));
  const auto machine = host.sysctlbyname("hw.machine");
  ASSERT_TRUE(machine);
  EXPECT_GT(std::string(reinterpret_cast<const char*>(machine->data())).size(), 0U);
  EXPECT_FALSE(host.sysctlbyname("hw.unheard-of"));
}

}  // namespace
}  // namespace tarni::test
