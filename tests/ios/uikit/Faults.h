// Systems that lack something, and code that raises, for tests. All faults end with `EndFaults`.
#pragma once

#import "backends/ios/Apple.h"

#ifdef __cplusplus
extern "C" {
#endif

// The class behaves as if it had never had the method.
void ForgetMethod(NSString* className, SEL selector);
// objc_lookUpClass no longer finds it.
void ForgetClass(NSString* className);
// The method raises "a fault", an NSRangeException, whatever it is called with.
void RaiseIn(NSString* className, SEL selector);
// How often that has happened since.
int RaisedFaults(void);
// The method answers this, whatever it is called with.
void AnswerIn(NSString* className, SEL selector, id answer);
void EndFaults(void);
extern NSOperatingSystemVersion UISystemVersion;

#ifdef __cplusplus
}
#endif
