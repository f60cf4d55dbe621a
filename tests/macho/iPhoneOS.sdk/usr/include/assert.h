#undef assert
#ifdef NDEBUG
#define assert(condition) ((void)0)
#else
#define assert(condition) ((condition) ? (void)0 : __builtin_trap())
#endif
#ifndef __cplusplus
#define static_assert _Static_assert
#endif
