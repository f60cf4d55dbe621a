// A machine whose counters a test sets, in place of the kernel's.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "backends/headless/Environment.h"
#include "platform/Platform.h"

namespace tarni::test {

class ScriptedMachHost : public platform::MachHost {
 public:
  std::optional<std::vector<platform::ProcessorTicks>> hostProcessorInfo() override {
    return ticks;
  }
  std::optional<platform::VMStatistics64> hostStatistics64() override { return statistics; }
  unsigned activeProcessorCount() override { return 3; }
  std::uint64_t physicalMemory() override { return 10'000'000; }
  std::optional<std::vector<std::byte>> sysctlbyname(std::string_view /*name*/) override {
    return std::nullopt;
  }

  std::optional<std::vector<platform::ProcessorTicks>> ticks;
  std::optional<platform::VMStatistics64> statistics;
};

class Machine : public testing::Test {
 protected:
  Machine() {
    environment.install();
    platform::Platform parts = platform::current();
    parts.machHost = &host;
    platform::install(parts);
  }

  ScriptedMachHost host;
  headless::Environment environment;
};

}  // namespace tarni::test
