// The main queue of the double of libdispatch.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

// Any thread: appends the work, which the main thread's run loop does in the default mode, never
// inside other work of the queue.
void runOnMainRunLoop(void* context, void (*work)(void* context));

#ifdef __cplusplus
}
#endif
