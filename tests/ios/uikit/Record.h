// What was asked of the double through private setters, digitizer calls and `sendEvent:`, in order,
// one line a call, so that a test reads as the log it expects. Views are named by their class,
// touches, records and tick counts by their number ("touch 1", "finger 2", "ticks1"), and the
// present time is "now". Main thread.
#pragma once

#import "backends/ios/Apple.h"

#ifdef __cplusplus
extern "C" {
#endif

void Record(NSString* format, ...) NS_FORMAT_FUNCTION(1, 2);
// All lines since the last call.
NSArray* TakeRecord(void);
// The number of a value among those of its kind since then: 1, 2, …
unsigned RecordNumber(const char* kind, double value);
// "UIButton", or "nil".
NSString* RecordName(id object);
// Records whose references have not all been given back.
int LivingHIDEvents(void);

#ifdef __cplusplus
}
#endif
