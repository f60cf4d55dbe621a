#include "tests/darwin/MainQueue.h"

#import <Foundation/Foundation.h>

typedef struct {
  void* context;
  void (*work)(void*);
} Item;

static NSMutableArray* items;
static BOOL isServing;

@interface TarniMainQueue : NSObject
+ (void)serve;
@end

@implementation TarniMainQueue

+ (void)initialize {
  if (!items) items = [NSMutableArray new];
}

+ (NSValue*)next {
  @synchronized(items) {
    if ([items count] == 0) return nil;
    NSValue* const next = [[[items objectAtIndex:0] retain] autorelease];
    [items removeObjectAtIndex:0];
    return next;
  }
}

+ (void)serve {
  if (isServing) return;
  isServing = YES;
  for (NSValue* next = [self next]; next; next = [self next]) {
    NSAutoreleasePool* const pool = [NSAutoreleasePool new];
    Item item;
    [next getValue:&item];
    item.work(item.context);
    [pool release];
  }
  isServing = NO;
}

@end

void runOnMainRunLoop(void* context, void (*work)(void*)) {
  NSAutoreleasePool* const pool = [NSAutoreleasePool new];
  const Item item = {context, work};
  Class const queue = [TarniMainQueue class];
  @synchronized(items) {
    [items addObject:[NSValue valueWithBytes:&item objCType:@encode(Item)]];
  }
  [queue performSelectorOnMainThread:@selector(serve) withObject:nil waitUntilDone:NO];
  [pool release];
}
