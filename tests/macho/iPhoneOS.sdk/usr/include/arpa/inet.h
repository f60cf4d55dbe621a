#pragma once
#include <netinet/in.h>
__BEGIN_DECLS
const char* inet_ntop(int, const void*, char*, socklen_t);
int inet_pton(int, const char*, void*);
__END_DECLS
