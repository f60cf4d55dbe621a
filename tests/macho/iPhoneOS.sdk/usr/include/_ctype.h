#pragma once
#include <sys/types.h>

typedef int wint_t;
typedef uint32_t wctype_t;
typedef int wctrans_t;
#define _CTYPE_A 0x00000100L
#define _CTYPE_C 0x00000200L
#define _CTYPE_D 0x00000400L
#define _CTYPE_G 0x00000800L
#define _CTYPE_L 0x00001000L
#define _CTYPE_P 0x00002000L
#define _CTYPE_S 0x00004000L
#define _CTYPE_U 0x00008000L
#define _CTYPE_X 0x00010000L
#define _CTYPE_B 0x00020000L
#define _CTYPE_R 0x00040000L
#define _CACHED_RUNES (1 << 8)
typedef struct {
  char __magic[8];
  char __encoding[32];
  int (*__sgetrune)(const char*, size_t, const char**);
  int (*__sputrune)(int, char*, size_t, char**);
  int __invalid_rune;
  uint32_t __runetype[_CACHED_RUNES];
  int __maplower[_CACHED_RUNES];
  int __mapupper[_CACHED_RUNES];
} _RuneLocale;

__BEGIN_DECLS
extern _RuneLocale _DefaultRuneLocale;
int isalnum(int);
int isascii(int);
int isalpha(int);
int isblank(int);
int iscntrl(int);
int isdigit(int);
int isgraph(int);
int islower(int);
int isprint(int);
int ispunct(int);
int isspace(int);
int isupper(int);
int isxdigit(int);
int tolower(int);
int toupper(int);
__END_DECLS
