#pragma once
#include <sys/types.h>
#define O_RDONLY 0
#define O_WRONLY 1
#define O_RDWR 2
#define O_NONBLOCK 4
#define O_NOFOLLOW 0x100
#define O_CREAT 0x200
#define O_EXCL 0x800
#define O_CLOEXEC 0x1000000
#define FD_CLOEXEC 1
#define F_DUPFD_CLOEXEC 67
#define F_DUPFD 0
#define F_GETFD 1
#define F_SETFD 2
#define F_GETFL 3
#define F_SETFL 4
__BEGIN_DECLS
int fcntl(int, int, ...);
int open(const char*, int, ...);
__END_DECLS
