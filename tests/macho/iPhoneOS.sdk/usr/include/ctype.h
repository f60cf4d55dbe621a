#pragma once
#include <sys/types.h>

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
int isalnum(int);
int isalpha(int);
int isascii(int);
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
