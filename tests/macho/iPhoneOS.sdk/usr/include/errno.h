#pragma once
#include <bits/errno.h>
#include <sys/cdefs.h>

__BEGIN_DECLS
int* __error(void);
__END_DECLS
#define errno (*__error())
