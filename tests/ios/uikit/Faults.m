#define _GNU_SOURCE
#import "tests/ios/uikit/Faults.h"

#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

struct Fault {
  Method method;
  IMP original;
};

static NSMutableArray* faults(void) {
  static NSMutableArray* all = nil;
  if (!all) all = [[NSMutableArray alloc] init];
  return all;
}

static char forgottenClasses[8][64];
static int forgottenClassCount = 0;

static SEL forgottenMethods[8];
static int forgottenMethodCount = 0;

static BOOL isForgotten(SEL selector) {
  for (int i = 0; i < forgottenMethodCount; ++i) {
    if (sel_isEqual(selector, forgottenMethods[i])) return YES;
  }
  return NO;
}

static int raisedFaults = 0;

static id raiseFault(id self, SEL selector, ...) {
  (void)self;
  ++raisedFaults;
  [NSException raise:NSRangeException format:@"a fault in %@", NSStringFromSelector(selector)];
  return nil;
}

static id notRecognized(id self, SEL selector, ...) {
  [self doesNotRecognizeSelector:selector];
  return nil;
}

// Methods are replaced on the class that has them, and put back by `EndFaults`.
static void replace(NSString* className, SEL selector, IMP implementation) {
  const Class cls = NSClassFromString(className);
  const Method method = class_getInstanceMethod(cls, selector)
                            ? class_getInstanceMethod(cls, selector)
                            : class_getClassMethod(cls, selector);
  NSCAssert(method, @"%@ has no %@", className, NSStringFromSelector(selector));
  const IMP original = method_setImplementation(method, implementation);
  const struct Fault fault = {method, original};
  [faults() addObject:[NSData dataWithBytes:&fault length:sizeof fault]];
}

void RaiseIn(NSString* className, SEL selector) {
  raisedFaults = 0;
  replace(className, selector, raiseFault);
}

int RaisedFaults(void) {
  return raisedFaults;
}

static id givenAnswer = nil;

static id answerGiven(id self, SEL selector, ...) {
  return givenAnswer;
}

void AnswerIn(NSString* className, SEL selector, id answer) {
  givenAnswer = answer;
  replace(className, selector, answerGiven);
}

void ForgetMethod(NSString* className, SEL selector) {
  replace(className, selector, notRecognized);
  if (forgottenMethodCount == 8) abort();
  forgottenMethods[forgottenMethodCount++] = selector;
}

void ForgetClass(NSString* className) {
  if (forgottenClassCount == 8) abort();
  snprintf(forgottenClasses[forgottenClassCount++], 64, "%s", [className UTF8String]);
}

void EndFaults(void) {
  for (NSData* data in [faults() reverseObjectEnumerator]) {
    const struct Fault* const fault = [data bytes];
    method_setImplementation(fault->method, fault->original);
  }
  [faults() removeAllObjects];
  forgottenMethodCount = 0;
  forgottenClassCount = 0;
}

// In the place of the runtime's own, which stand behind them in the order of libraries. They are called while
// classes are loaded, so they send no message.
Class objc_lookUpClass(const char* name) {
  for (int i = 0; i < forgottenClassCount; ++i) {
    if (strcmp(name, forgottenClasses[i]) == 0) return Nil;
  }
  static Class (*lookUp)(const char*) = NULL;
  if (!lookUp) *(void**)&lookUp = dlsym(RTLD_NEXT, "objc_lookUpClass");
  return lookUp(name);
}

Method class_getInstanceMethod(Class cls, SEL selector) {
  if (isForgotten(selector)) return NULL;
  static Method (*lookUp)(Class, SEL) = NULL;
  if (!lookUp) *(void**)&lookUp = dlsym(RTLD_NEXT, "class_getInstanceMethod");
  return lookUp(cls, selector);
}

@interface NSObject (TarniFaults)
@end

@implementation NSObject (TarniFaults)

+ (void)load {
  const Method own = class_getInstanceMethod([NSObject class], @selector(tarniRespondsToSelector:));
  const Method original = class_getInstanceMethod([NSObject class], @selector(respondsToSelector:));
  method_exchangeImplementations(own, original);
}

- (BOOL)tarniRespondsToSelector:(SEL)selector {
  return !isForgotten(selector) && [self tarniRespondsToSelector:selector];
}

@end
