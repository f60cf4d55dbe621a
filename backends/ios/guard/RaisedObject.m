#include "backends/ios/guard/RaisedObject.h"

id tarni_raisedBy(void (*call)(void*), void* context) {
  @try {
    call(context);
  } @catch (id object) {
    return [[object retain] autorelease];
  }
  return nil;
}

void tarni_raise(id object) {
  if (object) @throw object;
}
