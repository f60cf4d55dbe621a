#pragma once
#include <sys/types.h>
#define FIONREAD 0x4004667fUL
__BEGIN_DECLS
int ioctl(int, unsigned long, ...);
__END_DECLS
