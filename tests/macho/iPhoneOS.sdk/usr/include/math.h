#pragma once
#include <sys/cdefs.h>

#define HUGE_VAL __builtin_huge_val()
#define HUGE_VALF __builtin_huge_valf()
#define HUGE_VALL __builtin_huge_vall()
#define INFINITY HUGE_VALF
#define NAN __builtin_nanf("")
#define FP_NAN 1
#define FP_INFINITE 2
#define FP_ZERO 3
#define FP_NORMAL 4
#define FP_SUBNORMAL 5
#define FP_ILOGB0 (-2147483647 - 1)
#define FP_ILOGBNAN (-2147483647 - 1)
#define MATH_ERRNO 1
#define MATH_ERREXCEPT 2
#define math_errhandling 2
#define M_PI 3.14159265358979323846264338327950288

// Every function comes in three widths.
#define __TYPED(declare) declare(double, ) declare(float, f) declare(long double, l)
#define __ONE(type, suffix)        \
  type acos##suffix(type);         \
  type acosh##suffix(type);        \
  type asin##suffix(type);         \
  type asinh##suffix(type);        \
  type atan##suffix(type);         \
  type atanh##suffix(type);        \
  type cbrt##suffix(type);         \
  type ceil##suffix(type);         \
  type cos##suffix(type);          \
  type cosh##suffix(type);         \
  type erf##suffix(type);          \
  type erfc##suffix(type);         \
  type exp##suffix(type);          \
  type exp2##suffix(type);         \
  type expm1##suffix(type);        \
  type fabs##suffix(type);         \
  type floor##suffix(type);        \
  int ilogb##suffix(type);         \
  type lgamma##suffix(type);       \
  long long llrint##suffix(type);  \
  long long llround##suffix(type); \
  type log##suffix(type);          \
  type log10##suffix(type);        \
  type log1p##suffix(type);        \
  type log2##suffix(type);         \
  type logb##suffix(type);         \
  long lrint##suffix(type);        \
  long lround##suffix(type);       \
  type nan##suffix(const char*);   \
  type nearbyint##suffix(type);    \
  type rint##suffix(type);         \
  type round##suffix(type);        \
  type sin##suffix(type);          \
  type sinh##suffix(type);         \
  type sqrt##suffix(type);         \
  type tan##suffix(type);          \
  type tanh##suffix(type);         \
  type tgamma##suffix(type);       \
  type trunc##suffix(type);
#define __MORE(type, suffix)                  \
  type atan2##suffix(type, type);             \
  type copysign##suffix(type, type);          \
  type fdim##suffix(type, type);              \
  type fma##suffix(type, type, type);         \
  type fmax##suffix(type, type);              \
  type fmin##suffix(type, type);              \
  type fmod##suffix(type, type);              \
  type frexp##suffix(type, int*);             \
  type hypot##suffix(type, type);             \
  type ldexp##suffix(type, int);              \
  type modf##suffix(type, type*);             \
  type nextafter##suffix(type, type);         \
  type nexttoward##suffix(type, long double); \
  type pow##suffix(type, type);               \
  type remainder##suffix(type, type);         \
  type remquo##suffix(type, type, int*);      \
  type scalbln##suffix(type, long);           \
  type scalbn##suffix(type, int);

typedef float float_t;
typedef double double_t;
__BEGIN_DECLS
__TYPED(__ONE)
__TYPED(__MORE)
__END_DECLS
