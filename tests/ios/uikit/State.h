// Where objects of the double keep what they hold: the backend's header declares the classes
// without instance variables, and the runtime on Linux allows them nowhere else.
//
// Numbers stand in a structure behind the object, which `STATE_IS(Type)` in the implementation of a
// root class makes room for. Objects are kept as associated objects under their names.
#pragma once

#import "tests/ios/uikit/UIKit.h"

// Types and names of methods take no parentheses.
// NOLINTBEGIN(bugprone-macro-parentheses)
#define STATE_IS(Type)                                 \
  +(id)allocWithZone : (NSZone*)zone {                 \
    return NSAllocateObject(self, sizeof(Type), zone); \
  }
#define STATE(Type) ((Type*)object_getIndexedIvars(self))

// The getter and the setter of a property, over a field of the state or over an object that is
// kept.
#define PROPERTY(State, Type, field, getter, Setter) \
  -(Type)getter {                                    \
    return STATE(State)->field;                      \
  }                                                  \
  -(void)Setter : (Type)value {                      \
    STATE(State)->field = value;                     \
  }
#define KEPT(Type, getter, Setter) \
  -(Type)getter {                  \
    return kept(self, #getter);    \
  }                                \
  -(void)Setter : (Type)value {    \
    keep(self, #getter, value);    \
  }
// The same over an object that is not retained.
#define HELD(Type, getter, Setter)                                   \
  -(Type)getter {                                                    \
    return [kept(self, #getter) nonretainedObjectValue];             \
  }                                                                  \
  -(void)Setter : (Type)value {                                      \
    keep(self, #getter, [NSValue valueWithNonretainedObject:value]); \
  }
// NOLINTEND(bugprone-macro-parentheses)

#ifdef __cplusplus
extern "C" {
#endif
id kept(id object, const char* name);
void keep(id object, const char* name, id value);
#ifdef __cplusplus
}
#endif
