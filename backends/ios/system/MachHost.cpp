#include "backends/ios/system/MachHost.h"

#include <mach/mach.h>
#include <sys/sysctl.h>

#include <cstring>
#include <string>

namespace tarni::ios {
namespace {

// Each call of mach_host_self would add a reference to the port.
mach_port_t hostPort() {
  static const mach_port_t port = mach_host_self();
  return port;
}

template <typename Integer>
Integer systemInteger(MachHost& host, std::string_view name) {
  const auto bytes = host.sysctlbyname(name);
  Integer value = 0;
  if (bytes && bytes->size() == sizeof value) std::memcpy(&value, bytes->data(), sizeof value);
  return value;
}

}  // namespace

std::optional<std::vector<platform::ProcessorTicks>> MachHost::hostProcessorInfo() {
  natural_t cores = 0;
  processor_info_array_t words = nullptr;
  mach_msg_type_number_t wordCount = 0;
  const kern_return_t result =
      host_processor_info(hostPort(), PROCESSOR_CPU_LOAD_INFO, &cores, &words, &wordCount);
  if (result != KERN_SUCCESS) return std::nullopt;
  std::vector<platform::ProcessorTicks> ticks(cores);
  const auto* loads = reinterpret_cast<const processor_cpu_load_info*>(words);
  for (platform::ProcessorTicks& core : ticks) {
    core.user = loads->cpu_ticks[CPU_STATE_USER];
    core.system = loads->cpu_ticks[CPU_STATE_SYSTEM];
    core.idle = loads->cpu_ticks[CPU_STATE_IDLE];
    core.nice = loads->cpu_ticks[CPU_STATE_NICE];
    ++loads;
  }
  vm_deallocate(mach_task_self(), reinterpret_cast<vm_address_t>(words),
                wordCount * sizeof(integer_t));
  return ticks;
}

std::optional<platform::VMStatistics64> MachHost::hostStatistics64() {
  vm_statistics64_data_t pages{};
  mach_msg_type_number_t wordCount = HOST_VM_INFO64_COUNT;
  const kern_return_t result = host_statistics64(
      hostPort(), HOST_VM_INFO64, reinterpret_cast<host_info64_t>(&pages), &wordCount);
  if (result != KERN_SUCCESS) return std::nullopt;
  platform::VMStatistics64 statistics;
  statistics.activePages = pages.active_count;
  statistics.inactivePages = pages.inactive_count;
  statistics.wiredPages = pages.wire_count;
  statistics.pageIns = pages.pageins;
  statistics.pageOuts = pages.pageouts;
  statistics.faults = pages.faults;
  return statistics;
}

unsigned MachHost::activeProcessorCount() {
  return systemInteger<std::uint32_t>(*this, "hw.activecpu");
}

std::uint64_t MachHost::physicalMemory() {
  return systemInteger<std::uint64_t>(*this, "hw.memsize");
}

std::optional<std::vector<std::byte>> MachHost::sysctlbyname(std::string_view name) {
  const std::string text(name);
  std::size_t size = 0;
  if (::sysctlbyname(text.c_str(), nullptr, &size, nullptr, 0) != 0) return std::nullopt;
  std::vector<std::byte> value(size);
  if (::sysctlbyname(text.c_str(), value.data(), &size, nullptr, 0) != 0) return std::nullopt;
  value.resize(size);
  return value;
}

}  // namespace tarni::ios
