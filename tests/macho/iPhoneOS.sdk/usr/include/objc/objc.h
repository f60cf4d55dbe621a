#pragma once
#include <stdbool.h>
#include <sys/types.h>
#ifndef __OBJC_BOOL_IS_BOOL
#error "The simulators and the devices of this check have a BOOL of their own"
#endif
typedef bool BOOL;
#define YES __objc_yes
#define NO __objc_no
#define nil ((id)0)
#define Nil ((Class)0)
typedef struct objc_class* Class;
struct objc_object {
  Class isa;
};
typedef struct objc_object* id;
typedef struct objc_selector* SEL;
typedef void (*IMP)(void);
