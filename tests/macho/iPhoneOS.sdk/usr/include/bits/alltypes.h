// The types of the C library that the headers of musl ask for, as they are there.
#pragma once
#include <stdarg.h>
#include <sys/types.h>

typedef struct stream FILE;
typedef struct locale* locale_t;
typedef int wint_t;
typedef uint32_t wctype_t;
typedef int clockid_t;
typedef void* timer_t;
typedef va_list __isoc_va_list;
typedef float float_t;
typedef double double_t;
struct timespec {
  time_t tv_sec;
  long tv_nsec;
};
// Incomplete input between two calls: conversions alone look inside.
typedef struct mbstate {
  uint64_t words[16];
} mbstate_t;

__BEGIN_DECLS
uint32_t arc4random(void);
void* aligned_alloc(size_t, size_t) __attribute__((availability(ios, introduced = 13.0)));
int timespec_get(struct timespec*, int) __attribute__((availability(ios, introduced = 13.0)));
__END_DECLS
