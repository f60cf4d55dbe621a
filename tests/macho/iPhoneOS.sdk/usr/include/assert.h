#include <sys/cdefs.h>
#undef assert
#ifdef NDEBUG
#define assert(condition) ((void)0)
#else
__BEGIN_DECLS
void __assert_rtn(const char*, const char*, int, const char*) __attribute__((noreturn));
__END_DECLS
#define assert(condition)                                                                     \
  (__builtin_expect(!(condition), 0) ? __assert_rtn(__func__, __FILE__, __LINE__, #condition) \
                                     : (void)0)
#endif
#ifndef __cplusplus
#define static_assert _Static_assert
#endif
