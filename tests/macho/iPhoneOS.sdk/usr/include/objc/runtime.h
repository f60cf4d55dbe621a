#pragma once
#include <objc/objc.h>

typedef struct objc_method* Method;
typedef struct objc_ivar* Ivar;
__BEGIN_DECLS
BOOL class_addMethod(Class, SEL, IMP, const char* types);
Method class_getInstanceMethod(Class, SEL);
Ivar class_getInstanceVariable(Class, const char* name);
const char* class_getName(Class);
Class class_getSuperclass(Class);
IMP class_replaceMethod(Class, SEL, IMP, const char* types);
const char* ivar_getTypeEncoding(Ivar);
void method_exchangeImplementations(Method, Method);
IMP method_getImplementation(Method);
SEL method_getName(Method);
const char* method_getTypeEncoding(Method);
Class object_getClass(id);
id object_getIvar(id, Ivar);
Class objc_lookUpClass(const char* name);
const char* sel_getName(SEL);
SEL sel_registerName(const char*);
__END_DECLS
