#include "backends/posix/MachHost.h"

#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <bit>
#include <cctype>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace tarni::posix {

using platform::ProcessorTicks;
using platform::VMStatistics64;

namespace {

using Bytes = std::vector<std::byte>;

std::uint64_t pageSize() {
  return static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

Bytes bytesOf(std::uint64_t value) {
  const auto bytes = std::bit_cast<std::array<std::byte, sizeof value>>(value);
  return {bytes.begin(), bytes.end()};
}

Bytes bytesOf(const char* text) {
  const auto* const bytes = reinterpret_cast<const std::byte*>(text);
  return {bytes, bytes + std::char_traits<char>::length(text) + 1};
}

// "cpu0 user nice system idle iowait irq softirq steal …"; null for any other line.
std::optional<ProcessorTicks> ticksOfCore(const std::string& line) {
  constexpr std::string_view kPrefix = "cpu";
  if (!line.starts_with(kPrefix) || line.size() <= kPrefix.size()) return std::nullopt;
  if (!std::isdigit(static_cast<unsigned char>(line[kPrefix.size()]))) return std::nullopt;
  std::istringstream fields(line);
  std::string core;
  std::uint64_t user = 0, nice = 0, system = 0, idle = 0, wait = 0, irq = 0, softIrq = 0, steal = 0;
  fields >> core >> user >> nice >> system >> idle;
  if (!fields) return std::nullopt;
  // Old kernels give no more than these.
  fields >> wait >> irq >> softIrq >> steal;
  ProcessorTicks ticks;
  ticks.user = static_cast<std::uint32_t>(user);
  ticks.system = static_cast<std::uint32_t>(system + irq + softIrq + steal);
  ticks.idle = static_cast<std::uint32_t>(idle + wait);
  ticks.nice = static_cast<std::uint32_t>(nice);
  return ticks;
}

}  // namespace

std::optional<std::vector<ProcessorTicks>> MachHost::hostProcessorInfo() {
  std::ifstream file(proc_ / "stat");
  std::vector<ProcessorTicks> cores;
  for (std::string line; std::getline(file, line);) {
    if (const auto ticks = ticksOfCore(line)) cores.push_back(*ticks);
  }
  if (cores.empty()) return std::nullopt;
  return cores;
}

std::optional<VMStatistics64> MachHost::hostStatistics64() {
  std::ifstream file(proc_ / "vmstat");
  std::map<std::string, std::uint64_t> counts;
  std::string name;
  for (std::uint64_t count = 0; file >> name >> count;) counts[name] = count;
  if (counts.empty()) return std::nullopt;
  // The kernel counts what it pages in kibibytes.
  const std::uint64_t kibibytesPerPage = pageSize() / 1024;
  VMStatistics64 statistics;
  statistics.activePages = counts["nr_active_anon"] + counts["nr_active_file"];
  statistics.inactivePages = counts["nr_inactive_anon"] + counts["nr_inactive_file"];
  statistics.wiredPages =
      counts["nr_unevictable"] + counts["nr_slab_unreclaimable"] + counts["nr_page_table_pages"];
  statistics.pageIns = counts["pgpgin"] / kibibytesPerPage;
  statistics.pageOuts = counts["pgpgout"] / kibibytesPerPage;
  statistics.faults = counts["pgfault"];
  return statistics;
}

unsigned MachHost::activeProcessorCount() {
  return static_cast<unsigned>(sysconf(_SC_NPROCESSORS_ONLN));
}

std::uint64_t MachHost::physicalMemory() {
  return static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) * pageSize();
}

std::optional<Bytes> MachHost::sysctlbyname(std::string_view name) {
  utsname system{};
  uname(&system);
  if (name == "hw.machine" || name == "hw.model") return bytesOf(system.machine);
  if (name == "hw.ncpu") {
    return bytesOf(static_cast<std::uint64_t>(sysconf(_SC_NPROCESSORS_CONF)));
  }
  if (name == "hw.activecpu") return bytesOf(std::uint64_t{activeProcessorCount()});
  if (name == "hw.memsize") return bytesOf(physicalMemory());
  if (name == "hw.pagesize") return bytesOf(pageSize());
  if (name == "kern.ostype") return bytesOf(system.sysname);
  if (name == "kern.osrelease") return bytesOf(system.release);
  if (name == "kern.version") return bytesOf(system.version);
  if (name == "kern.hostname") return bytesOf(system.nodename);
  return std::nullopt;
}

}  // namespace tarni::posix
