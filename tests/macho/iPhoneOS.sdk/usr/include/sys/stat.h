#pragma once
#include <sys/types.h>
__BEGIN_DECLS
int mkdir(const char*, mode_t);
__END_DECLS
