#pragma once
#include <locale.h>
#include <stdlib.h>
#include <time.h>
#include <wchar.h>

// libc++ builds its own kinds of characters on these bits.
enum {
  _CTYPE_A = 0x100,
  _CTYPE_C = 0x200,
  _CTYPE_D = 0x400,
  _CTYPE_L = 0x1000,
  _CTYPE_P = 0x2000,
  _CTYPE_S = 0x4000,
  _CTYPE_U = 0x8000,
  _CTYPE_X = 0x10000,
  _CTYPE_B = 0x20000,
  _CTYPE_R = 0x40000
};
#define _CACHED_RUNES 256

__BEGIN_DECLS
int ___mb_cur_max_l(locale_t);
int asprintf_l(char**, locale_t, const char*, ...);
wint_t btowc_l(int, locale_t);
struct lconv* localeconv_l(locale_t);
size_t mbrlen_l(const char*, size_t, mbstate_t*, locale_t);
size_t mbrtowc_l(wchar_t*, const char*, size_t, mbstate_t*, locale_t);
size_t mbsnrtowcs_l(wchar_t*, const char**, size_t, size_t, mbstate_t*, locale_t);
size_t mbsrtowcs_l(wchar_t*, const char**, size_t, mbstate_t*, locale_t);
int mbtowc_l(wchar_t*, const char*, size_t, locale_t);
int snprintf_l(char*, size_t, locale_t, const char*, ...);
int sscanf_l(const char*, locale_t, const char*, ...);
long long strtoll_l(const char*, char**, int, locale_t);
unsigned long long strtoull_l(const char*, char**, int, locale_t);
int vasprintf_l(char**, locale_t, const char*, va_list);
size_t wcrtomb_l(char*, wchar_t, mbstate_t*, locale_t);
size_t wcsnrtombs_l(char*, const wchar_t**, size_t, size_t, mbstate_t*, locale_t);
int wctob_l(wint_t, locale_t);
__END_DECLS
#define MB_CUR_MAX_L(locale) (___mb_cur_max_l(locale))
