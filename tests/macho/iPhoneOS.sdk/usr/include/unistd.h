#pragma once
#include <sys/types.h>
#define _POSIX_TIMERS (-1)
#define _SC_NPROCESSORS_ONLN 58
#define STDERR_FILENO 2
__BEGIN_DECLS
int close(int);
int dup2(int, int);
int ftruncate(int, off_t);
uid_t geteuid(void);
int getpagesize(void);
int getpeereid(int, uid_t*, gid_t*);
pid_t getpid(void);
int isatty(int);
int pipe(int[2]);
ssize_t read(int, void*, size_t);
unsigned sleep(unsigned);
int unlink(const char*);
int usleep(useconds_t);
ssize_t write(int, const void*, size_t);
__END_DECLS
