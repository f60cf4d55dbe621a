#include "backends/ios/guard/GuardedCall.h"

#import <Foundation/Foundation.h>
#include <stdio.h>
#include <string.h>

static void copyText(char* target, size_t capacity, NSString* text) {
  const char* const bytes = [text UTF8String];
  snprintf(target, capacity, "%s", bytes ? bytes : "");
}

// What is raised need not be an NSException, and its reason may be nil.
bool tarni_guardedCall(void (*call)(void*), void* context, struct TarniRaised* raised) {
  @try {
    call(context);
    return true;
  } @catch (NSException* exception) {
    copyText(raised->name, sizeof raised->name, [exception name]);
    copyText(raised->reason, sizeof raised->reason, [exception reason]);
  } @catch (id object) {
    copyText(raised->name, sizeof raised->name, @"NSGenericException");
    copyText(raised->reason, sizeof raised->reason, [object description]);
  }
  return false;
}
