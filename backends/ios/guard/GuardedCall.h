// The C function behind Guard.h: the `@try` round its calls. It stands in a file of plain
// Objective-C, because no file may catch exceptions of both languages.
#pragma once

#include <stdbool.h>

#ifdef __cplusplus
extern "C" {
#endif

// The texts of an Objective-C exception, UTF-8; what is too long is cut.
struct TarniRaised {
  char name[128];
  char reason[1024];
};

// Calls `call` with `context`. False when it raised: `raised` then tells what.
bool tarni_guardedCall(void (*call)(void* context), void* context, struct TarniRaised* raised);

#ifdef __cplusplus
}
#endif
