// Mach's statistics as /proc gives them.
#include "tests/darwin/Mach.h"

#include <mach/mach.h>
#include <sys/sysctl.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "backends/posix/MachHost.h"
#include "backends/posix/ProcessInfo.h"

namespace tarni::test {

std::size_t wordsKept = 0;
int hostReferences = 0;

}  // namespace tarni::test

namespace {

constexpr kern_return_t kFailure = 5;

tarni::posix::MachHost& machine() {
  static auto* const host = new tarni::posix::MachHost;
  return *host;
}

}  // namespace

mach_port_t mach_task_self_ = 1;

mach_port_t mach_host_self() {
  ++tarni::test::hostReferences;
  return 2;
}

kern_return_t host_processor_info(mach_port_t, int flavor, natural_t* processors,
                                  processor_info_array_t* words, mach_msg_type_number_t* count) {
  const auto cores = machine().hostProcessorInfo();
  if (flavor != PROCESSOR_CPU_LOAD_INFO || !cores) return kFailure;
  *processors = static_cast<natural_t>(cores->size());
  *count = *processors * CPU_STATE_MAX;
  *words = static_cast<processor_info_array_t>(std::malloc(*count * sizeof(integer_t)));
  tarni::test::wordsKept += *count;
  auto* load = reinterpret_cast<processor_cpu_load_info*>(*words);
  for (const auto& core : *cores) *load++ = {{core.user, core.system, core.idle, core.nice}};
  return KERN_SUCCESS;
}

kern_return_t vm_deallocate(mach_port_t, vm_address_t address, vm_size_t size) {
  std::free(reinterpret_cast<void*>(address));  // NOLINT(performance-no-int-to-ptr)
  tarni::test::wordsKept -= size / sizeof(integer_t);
  return KERN_SUCCESS;
}

kern_return_t host_statistics64(mach_port_t, int flavor, host_info64_t words,
                                mach_msg_type_number_t* count) {
  const auto statistics = machine().hostStatistics64();
  const bool isAnswered = flavor == HOST_VM_INFO64 && *count == HOST_VM_INFO64_COUNT && statistics;
  if (!isAnswered) return kFailure;
  vm_statistics64_data_t pages{};
  pages.active_count = static_cast<natural_t>(statistics->activePages);
  pages.inactive_count = static_cast<natural_t>(statistics->inactivePages);
  pages.wire_count = static_cast<natural_t>(statistics->wiredPages);
  pages.pageins = statistics->pageIns;
  pages.pageouts = statistics->pageOuts;
  pages.faults = statistics->faults;
  std::memcpy(words, &pages, sizeof pages);
  return KERN_SUCCESS;
}

kern_return_t task_info(mach_port_t, natural_t flavor, task_info_t words,
                        mach_msg_type_number_t* count) {
  const auto resident = tarni::posix::ProcessInfo().residentMemory();
  if (flavor != MACH_TASK_BASIC_INFO || *count != MACH_TASK_BASIC_INFO_COUNT || !resident) {
    return kFailure;
  }
  mach_task_basic_info_data_t info{};
  info.resident_size = *resident;
  std::memcpy(words, &info, sizeof info);
  return KERN_SUCCESS;
}

int sysctlbyname(const char* name, void* value, size_t* size, void*, size_t) {
  auto bytes = machine().sysctlbyname(name);
  if (!bytes) {
    errno = ENOENT;
    return -1;
  }
  // What counts processors has four bytes.
  if (std::strcmp(name, "hw.ncpu") == 0 || std::strcmp(name, "hw.activecpu") == 0) bytes->resize(4);
  if (value) std::memcpy(value, bytes->data(), bytes->size());
  *size = bytes->size();
  return 0;
}
