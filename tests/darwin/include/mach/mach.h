// What the backend uses of Mach.
#pragma once

#include <stdint.h>

#define KERN_SUCCESS 0
#define PROCESSOR_CPU_LOAD_INFO 2
#define HOST_VM_INFO64 4
#define MACH_TASK_BASIC_INFO 20
enum { CPU_STATE_USER, CPU_STATE_SYSTEM, CPU_STATE_IDLE, CPU_STATE_NICE, CPU_STATE_MAX };

typedef int kern_return_t;
typedef int integer_t;
typedef unsigned natural_t;
typedef natural_t mach_port_t;
typedef natural_t mach_msg_type_number_t;
typedef integer_t* processor_info_array_t;
typedef integer_t* host_info64_t;
typedef uintptr_t vm_address_t;
typedef uintptr_t vm_size_t;
typedef integer_t* task_info_t;

struct processor_cpu_load_info {
  natural_t cpu_ticks[CPU_STATE_MAX];
};
typedef struct {
  natural_t free_count, active_count, inactive_count, wire_count;
  uint64_t zero_fill_count, reactivations, pageins, pageouts, faults, cow_faults, lookups, hits,
      purges;
  natural_t purgeable_count, speculative_count;
  uint64_t decompressions, compressions, swapins, swapouts;
  natural_t compressor_page_count, throttled_count, external_page_count, internal_page_count;
  uint64_t total_uncompressed_pages_in_compressor;
} vm_statistics64_data_t;
typedef struct {
  integer_t seconds;
  integer_t microseconds;
} time_value_t;
typedef struct {
  uint64_t virtual_size, resident_size, resident_size_max;
  time_value_t user_time, system_time;
  integer_t policy, suspend_count;
} mach_task_basic_info_data_t;
#define MACH_TASK_BASIC_INFO_COUNT \
  ((mach_msg_type_number_t)(sizeof(mach_task_basic_info_data_t) / sizeof(natural_t)))
#define HOST_VM_INFO64_COUNT \
  ((mach_msg_type_number_t)(sizeof(vm_statistics64_data_t) / sizeof(integer_t)))

#ifdef __cplusplus
extern "C" {
#endif
extern mach_port_t mach_task_self_;
#define mach_task_self() mach_task_self_
mach_port_t mach_host_self(void);
kern_return_t host_processor_info(mach_port_t host, int flavor, natural_t* processors,
                                  processor_info_array_t* words, mach_msg_type_number_t* count);
kern_return_t host_statistics64(mach_port_t host, int flavor, host_info64_t words,
                                mach_msg_type_number_t* count);
kern_return_t task_info(mach_port_t task, natural_t flavor, task_info_t words,
                        mach_msg_type_number_t* count);
kern_return_t vm_deallocate(mach_port_t task, vm_address_t address, vm_size_t size);
#ifdef __cplusplus
}
#endif
