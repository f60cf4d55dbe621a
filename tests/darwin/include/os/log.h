// What the backend uses of the unified log.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct os_log_s* os_log_t;
os_log_t os_log_create(const char* subsystem, const char* category);

#ifdef __APPLE__
extern void* __dso_handle;
void _os_log_impl(void* library, os_log_t log, uint8_t type, const char* format, uint8_t* buffer,
                  uint32_t size);
#define OS_LOG_TYPE_DEFAULT 0
#define os_log(log, format, ...)                                                        \
  __extension__({                                                                       \
    static const char kept[] = format;                                                  \
    uint8_t buffer[__builtin_os_log_format_buffer_size(format, ##__VA_ARGS__)];         \
    __builtin_os_log_format(buffer, format, ##__VA_ARGS__);                             \
    _os_log_impl(&__dso_handle, log, OS_LOG_TYPE_DEFAULT, kept, buffer, sizeof buffer); \
  })
#else
// The double takes the one format that the backend uses: a text with its length.
void os_log_text(os_log_t log, int length, const char* text);
#define os_log(log, format, ...) os_log_text(log, __VA_ARGS__)
#endif

#ifdef __cplusplus
}
#endif
