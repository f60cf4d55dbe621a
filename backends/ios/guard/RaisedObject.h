// Carries an Objective-C exception round frames of C++ that would not let it through.
#pragma once

#import <Foundation/Foundation.h>

#ifdef __cplusplus
extern "C" {
#endif

// What `call` raised, autoreleased; nil when it came back.
id tarni_raisedBy(void (*call)(void* context), void* context);

// Raises the object; nothing for nil.
void tarni_raise(id object);

#ifdef __cplusplus
}
#endif
