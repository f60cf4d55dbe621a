#pragma once
#include <sys/cdefs.h>
#define RTLD_LAZY 0x1
#define RTLD_NOW 0x2
#define RTLD_NOLOAD 0x10
#define RTLD_DEFAULT ((void*)-2)
__BEGIN_DECLS
int dlclose(void*);
char* dlerror(void);
void* dlopen(const char*, int);
void* dlsym(void*, const char*);
__END_DECLS
