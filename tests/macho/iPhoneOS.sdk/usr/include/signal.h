#pragma once
#include <sys/types.h>
#define SIGPIPE 13
typedef void (*sig_t)(int);
#define SIG_IGN ((sig_t)1)
__BEGIN_DECLS
sig_t signal(int, sig_t);
__END_DECLS
