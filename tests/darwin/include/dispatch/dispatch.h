// What the backend uses of libdispatch: declared for the cross build, implemented in
// tests/darwin on Linux.
#pragma once

#include <stdint.h>

#define NSEC_PER_SEC 1000000000ULL
#define DISPATCH_TIME_NOW (0ULL)
#define DISPATCH_TIME_FOREVER (~0ULL)
#define DISPATCH_QUEUE_PRIORITY_DEFAULT 0
#define DISPATCH_QUEUE_PRIORITY_BACKGROUND INT16_MIN
#define DISPATCH_QUEUE_SERIAL ((dispatch_queue_attr_t)0)

#ifdef __cplusplus
extern "C" {
#endif

// Any of the objects.
typedef void* dispatch_object_t;
typedef struct dispatch_queue_s* dispatch_queue_t;
typedef struct dispatch_source_s* dispatch_source_t;
typedef struct dispatch_queue_attr_s* dispatch_queue_attr_t;
typedef const struct dispatch_source_type_s* dispatch_source_type_t;
typedef uint64_t dispatch_time_t;
typedef void (*dispatch_function_t)(void*);

extern struct dispatch_queue_s _dispatch_main_q;
extern const struct dispatch_source_type_s _dispatch_source_type_read;
extern const struct dispatch_source_type_s _dispatch_source_type_timer;
extern const struct dispatch_source_type_s _dispatch_source_type_write;
#define DISPATCH_SOURCE_TYPE_READ (&_dispatch_source_type_read)
#define DISPATCH_SOURCE_TYPE_TIMER (&_dispatch_source_type_timer)
#define DISPATCH_SOURCE_TYPE_WRITE (&_dispatch_source_type_write)

static inline dispatch_queue_t dispatch_get_main_queue(void) {
  return &_dispatch_main_q;
}
dispatch_queue_t dispatch_get_global_queue(intptr_t priority, uintptr_t flags);
dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_t attributes);
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
void dispatch_sync_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context,
                      dispatch_function_t work);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t nanoseconds);

dispatch_source_t dispatch_source_create(dispatch_source_type_t type, uintptr_t handle,
                                         uintptr_t mask, dispatch_queue_t queue);
void dispatch_set_context(dispatch_object_t object, void* context);
void dispatch_source_set_event_handler_f(dispatch_source_t source, dispatch_function_t handler);
void dispatch_source_set_cancel_handler_f(dispatch_source_t source, dispatch_function_t handler);
void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, uint64_t interval,
                               uint64_t leeway);
void dispatch_source_cancel(dispatch_source_t source);
void dispatch_resume(dispatch_object_t object);
void dispatch_suspend(dispatch_object_t object);
void dispatch_release(dispatch_object_t object);

#ifdef __cplusplus
}
#endif
