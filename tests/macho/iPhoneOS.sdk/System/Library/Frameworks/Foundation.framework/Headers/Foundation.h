// What the backend uses of Foundation.
#pragma once
#include <math.h>
#include <objc/objc.h>
#include <stdlib.h>
#include <string.h>

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double NSTimeInterval;
typedef double CGFloat;
typedef struct CGPoint {
  CGFloat x, y;
} CGPoint;
typedef struct CGSize {
  CGFloat width, height;
} CGSize;
typedef struct CGRect {
  CGPoint origin;
  CGSize size;
} CGRect;
typedef struct {
  NSInteger majorVersion, minorVersion, patchVersion;
} NSOperatingSystemVersion;
typedef NSUInteger NSStringEncoding;
enum { NSUTF8StringEncoding = 4, NSISOLatin1StringEncoding = 5 };
#define NS_REQUIRES_NIL_TERMINATION __attribute__((sentinel))

static const NSInteger NSNotFound = __LONG_MAX__;

@class NSArray, NSData, NSDictionary, NSError, NSInvocation, NSMethodSignature, NSNotification,
    NSString, NSURL;
@protocol NSObject
- (Class)class;
- (NSString*)description;
- (BOOL)isEqual:(id)object;
- (BOOL)isKindOfClass:(Class)cls;
- (BOOL)respondsToSelector:(SEL)selector;
- (id)performSelector:(SEL)selector;
- (id)performSelector:(SEL)selector withObject:(id)object;
- (id)retain;
- (oneway void)release;
- (id)autorelease;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
  Class isa;
}
+ (id)alloc;
+ (Class)class;
+ (void)load;
+ (id)new;
- (id)init;
- (id)copy;
- (void)dealloc;
- (id)valueForKey:(NSString*)key;
- (void)setValue:(id)value forKey:(NSString*)key;
- (NSMethodSignature*)methodSignatureForSelector:(SEL)selector;
@end

typedef struct {
  unsigned long state;
  id __unsafe_unretained* itemsPtr;
  unsigned long* mutationsPtr;
  unsigned long extra[5];
} NSFastEnumerationState;
@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained*)objects
                                    count:(NSUInteger)count;
@end

@interface NSString : NSObject
+ (id)stringWithUTF8String:(const char*)text;
+ (id)stringWithContentsOfURL:(NSURL*)url
                     encoding:(NSStringEncoding)encoding
                        error:(NSError**)error;
- (id)initWithBytes:(const void*)bytes
             length:(NSUInteger)length
           encoding:(NSStringEncoding)encoding;
- (const char*)UTF8String;
- (NSUInteger)length;
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding;
- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding;
- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy;
- (BOOL)isEqualToString:(NSString*)other;
- (BOOL)hasPrefix:(NSString*)prefix;
@end

@interface NSArray : NSObject <NSFastEnumeration>
- (NSUInteger)count;
- (id)objectAtIndex:(NSUInteger)index;
@end

@interface NSMutableArray : NSArray
+ (NSMutableArray*)array;
- (void)addObject:(id)object;
@end

@interface NSSet : NSObject <NSFastEnumeration>
- (NSUInteger)count;
@end

@interface NSDictionary : NSObject
+ (id)dictionaryWithObjects:(const id*)objects forKeys:(const id*)keys count:(NSUInteger)count;
@end

@interface NSData : NSObject
+ (id)dataWithBytes:(const void*)bytes length:(NSUInteger)length;
+ (id)dataWithBytesNoCopy:(void*)bytes length:(NSUInteger)length freeWhenDone:(BOOL)freeWhenDone;
- (const void*)bytes;
- (NSUInteger)length;
- (NSString*)base64EncodedStringWithOptions:(NSUInteger)options;
@end

@interface NSValue : NSObject
+ (NSValue*)valueWithBytes:(const void*)bytes objCType:(const char*)type;
+ (NSValue*)valueWithCGPoint:(CGPoint)point;
@end

@interface NSNumber : NSValue
+ (NSNumber*)numberWithBool:(BOOL)value;
- (BOOL)boolValue;
@end

@interface NSError : NSObject
- (NSString*)domain;
- (NSInteger)code;
@end

@interface NSBundle : NSObject
+ (NSBundle*)mainBundle;
@property(readonly, copy) NSString* executablePath;
- (id)objectForInfoDictionaryKey:(NSString*)key;
@end

@interface NSURL : NSObject
+ (id)URLWithString:(NSString*)text;
@end

@interface NSUUID : NSObject
+ (id)UUID;
- (NSString*)UUIDString;
@end

@interface NSException : NSObject
- (NSString*)name;
- (NSString*)reason;
- (void)raise;
@end

@interface NSThread : NSObject
+ (BOOL)isMainThread;
@end

@interface NSProcessInfo : NSObject
+ (NSProcessInfo*)processInfo;
- (NSTimeInterval)systemUptime;
- (BOOL)isOperatingSystemAtLeastVersion:(NSOperatingSystemVersion)version;
@end

typedef NSString* NSNotificationName;
@interface NSNotificationCenter : NSObject
+ (NSNotificationCenter*)defaultCenter;
- (void)addObserver:(id)observer
           selector:(SEL)selector
               name:(NSNotificationName)name
             object:(id)object;
- (void)postNotificationName:(NSNotificationName)name object:(id)object;
@end
