#define _GNU_SOURCE
#import "tests/ios/uikit/Faults.h"

#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

// A method of the class that has it, which those below it inherit.
struct Fault {
  Class owner;
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
static SEL raisingSelector = NULL;

// Where the method answers a structure, its arguments do not stand where this function has them.
static id raiseFault(id self, SEL selector, ...) {
  ++raisedFaults;
  [NSException raise:NSRangeException
              format:@"a fault in %@", NSStringFromSelector(raisingSelector)];
  return nil;
}

static id notRecognized(id self, SEL selector, ...) {
  [self doesNotRecognizeSelector:selector];
  return nil;
}

// Subclasses that have been used keep what they have inherited until a method is added above them.
static void refreshSubclasses(Class cls) {
  static int count = 0;
  char name[32];
  snprintf(name, sizeof name, "tarniRefresh%d", ++count);
  class_addMethod(cls, sel_registerName(name), notRecognized, "v@:");
}

static IMP exchange(const struct Fault* fault, IMP implementation) {
  const IMP before = method_setImplementation(fault->method, implementation);
  refreshSubclasses(fault->owner);
  return before;
}

// Methods are replaced on the class that has them, and put back by `EndFaults`.
static void replace(NSString* className, SEL selector, IMP implementation) {
  Class owner = NSClassFromString(className);
  if (!class_getInstanceMethod(owner, selector)) owner = object_getClass(owner);
  const Method method = class_getInstanceMethod(owner, selector);
  NSCAssert(method, @"%@ has no %@", className, NSStringFromSelector(selector));
  while (class_getInstanceMethod(class_getSuperclass(owner), selector) == method) {
    owner = class_getSuperclass(owner);
  }
  struct Fault fault = {owner, method, NULL};
  fault.original = exchange(&fault, implementation);
  [faults() addObject:[NSData dataWithBytes:&fault length:sizeof fault]];
}

void RaiseIn(NSString* className, SEL selector) {
  raisedFaults = 0;
  raisingSelector = selector;
  replace(className, selector, raiseFault);
}

int RaisedFaults(void) { return raisedFaults; }

static id givenAnswer = nil;

static id answerGiven(id self, SEL selector, ...) { return givenAnswer; }

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
    exchange(fault, fault->original);
  }
  [faults() removeAllObjects];
  forgottenMethodCount = 0;
  forgottenClassCount = 0;
}

// In the place of the runtime's own, which stand behind them in the order of libraries. They are
// called while classes are loaded, so they send no message.
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
