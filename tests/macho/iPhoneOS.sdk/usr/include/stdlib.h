#pragma once
#include <sys/types.h>

#define EXIT_FAILURE 1
#define EXIT_SUCCESS 0
#define RAND_MAX 0x7fffffff
typedef struct {
  int quot, rem;
} div_t;
typedef struct {
  long quot, rem;
} ldiv_t;
typedef struct {
  long long quot, rem;
} lldiv_t;

__BEGIN_DECLS
void abort(void) __attribute__((noreturn));
int abs(int);
int at_quick_exit(void (*)(void));
int atexit(void (*)(void));
double atof(const char*);
int atoi(const char*);
long atol(const char*);
long long atoll(const char*);
uint32_t arc4random(void);
void* aligned_alloc(size_t, size_t) __attribute__((availability(ios, introduced = 13.0)));
void* bsearch(const void*, const void*, size_t, size_t, int (*)(const void*, const void*));
void* calloc(size_t, size_t);
div_t div(int, int);
void exit(int) __attribute__((noreturn));
void _Exit(int) __attribute__((noreturn));
void free(void*);
char* getenv(const char*);
long labs(long);
ldiv_t ldiv(long, long);
long long llabs(long long);
lldiv_t lldiv(long long, long long);
void* malloc(size_t);
int mblen(const char*, size_t);
size_t mbstowcs(wchar_t*, const char*, size_t);
int mbtowc(wchar_t*, const char*, size_t);
int posix_memalign(void**, size_t, size_t);
void qsort(void*, size_t, size_t, int (*)(const void*, const void*));
void quick_exit(int) __attribute__((noreturn));
int rand(void);
void* realloc(void*, size_t);
int setenv(const char*, const char*, int);
void srand(unsigned);
double strtod(const char*, char**);
float strtof(const char*, char**);
long strtol(const char*, char**, int);
long double strtold(const char*, char**);
long long strtoll(const char*, char**, int);
unsigned long strtoul(const char*, char**, int);
unsigned long long strtoull(const char*, char**, int);
int unsetenv(const char*);
size_t wcstombs(char*, const wchar_t*, size_t);
int wctomb(char*, wchar_t);
__END_DECLS
