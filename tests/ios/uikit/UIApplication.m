// The application with its windows and events, the screen, and the main run loop.
#import "tests/ios/uikit/Record.h"
#import "tests/ios/uikit/State.h"

#include <stdlib.h>

static UIApplication* sharedApplication = nil;

@implementation UIScreen

+ (UIScreen*)mainScreen {
  static UIScreen* screen = nil;
  if (!screen) screen = [[UIScreen alloc] init];
  return screen;
}

- (CGRect)bounds {
  return NSMakeRect(0, 0, 390, 844);
}
- (CGFloat)scale {
  return 2;
}

@end

@implementation UIApplication

+ (UIApplication*)sharedApplication {
  return sharedApplication;
}

- (id)init {
  if ((self = [super init])) {
    keep(self, "windows", [NSMutableArray array]);
    keep(self, "openedURLs", [NSMutableArray array]);
    keep(self, "touchesEvent", [[[UIEvent alloc] init] autorelease]);
  }
  return self;
}

// --- windows

- (UIWindow*)keyWindow {
  return kept(self, "keyWindow");
}
- (void)setKeyWindow:(UIWindow*)window {
  keep(self, "keyWindow", window);
}
- (NSArray*)windows {
  return [[kept(self, "windows") copy] autorelease];
}

- (void)addWindow:(UIWindow*)window {
  if (![kept(self, "windows") containsObject:window]) [kept(self, "windows") addObject:window];
}

// --- events

- (UIEvent*)_touchesEvent {
  return kept(self, "touchesEvent");
}

static NSString* described(UIEvent* event) {
  NSMutableArray* const touches = [NSMutableArray array];
  for (UITouch* touch in [event allTouches]) {
    const CGPoint point = [touch locationInView:nil];
    [touches addObject:[NSString stringWithFormat:@" (phase %ld at %g %g)", (long)[touch phase],
                                                  point.x, point.y]];
  }
  [touches sortUsingSelector:@selector(compare:)];
  return [touches componentsJoinedByString:@""];
}

- (void)sendEvent:(UIEvent*)event {
  Record(@"sendEvent:%@", described(event));
  for (UIWindow* window in [self windows]) [window sendEvent:event];
}

// --- addresses

- (BOOL)canOpenURL:(NSURL*)url {
  return [[url scheme] length] > 0;
}
- (NSArray*)openedURLs {
  return kept(self, "openedURLs");
}
- (void)openURL:(NSURL*)url options:(NSDictionary*)options completionHandler:(void*)completion {
  [kept(self, "openedURLs") addObject:[url absoluteString]];
}

// --- the mode stack

- (void)pushRunLoopMode:(NSString*)mode {
  Record(@"pushRunLoopMode: %@", mode);
}
- (void)pushRunLoopMode:(NSString*)mode requester:(id)requester {
  Record(@"pushRunLoopMode: %@ requester:", mode);
}
- (void)popRunLoopMode:(NSString*)mode {
  Record(@"popRunLoopMode: %@", mode);
}
- (void)popRunLoopMode:(NSString*)mode requester:(id)requester {
  Record(@"popRunLoopMode: %@ requester:", mode);
}

@end

// --- the run loop

const CFRunLoopMode kCFRunLoopDefaultMode = (CFRunLoopMode) @"kCFRunLoopDefaultMode";

static NSString* nativeMode(CFRunLoopMode mode) {
  return mode == kCFRunLoopDefaultMode ? NSDefaultRunLoopMode : (NSString*)mode;
}

// A run loop of Foundation's that watches nothing returns at once.
static void keepAlive(NSString* mode) {
  static NSMutableSet* alive = nil;
  if (!alive) alive = [[NSMutableSet alloc] init];
  if ([alive containsObject:mode]) return;
  [alive addObject:mode];
  [[NSRunLoop currentRunLoop] addPort:[[NSPort port] retain] forMode:mode];
}

struct __CFRunLoopObserver {
  int references;  // first, as in all that is released here
  CFOptionFlags activities;
  CFRunLoopObserverCallBack callout;
};

const CFRunLoopMode kCFRunLoopCommonModes = (CFRunLoopMode) @"kCFRunLoopCommonModes";

static CFRunLoopObserverRef observers[8];
static size_t observerCount = 0;

CFRunLoopRef CFRunLoopGetMain(void) { return (CFRunLoopRef)[NSRunLoop mainRunLoop]; }

CFRunLoopObserverRef CFRunLoopObserverCreate(CFAllocatorRef allocator, CFOptionFlags activities,
                                             unsigned char repeats, long order,
                                             CFRunLoopObserverCallBack callout,
                                             CFRunLoopObserverContext* context) {
  (void)allocator, (void)repeats, (void)order, (void)context;
  CFRunLoopObserverRef const made = malloc(sizeof *made);
  *made = (struct __CFRunLoopObserver){1, activities, callout};
  return made;
}

void CFRunLoopAddObserver(CFRunLoopRef loop, CFRunLoopObserverRef observer, CFRunLoopMode mode) {
  (void)loop, (void)mode;
  ++observer->references;
  observers[observerCount++] = observer;
}

static void tellObservers(CFRunLoopActivity activity) {
  for (size_t i = 0; i < observerCount; ++i) {
    if (observers[i]->activities & activity) observers[i]->callout(observers[i], activity, NULL);
  }
}

// Foundation's wait and what it wakes for are one: to observers it wakes behind that.
static void runOnce(NSString* mode, NSDate* end) {
  if ([NSThread isMainThread]) tellObservers(kCFRunLoopBeforeWaiting);
  [[NSRunLoop currentRunLoop] runMode:mode beforeDate:end];
  if ([NSThread isMainThread]) tellObservers(kCFRunLoopAfterWaiting);
}

BOOL UIWaitsAreSkipped = NO;

CFRunLoopRunResult CFRunLoopRunInMode(CFRunLoopMode mode, CFTimeInterval seconds,
                                      unsigned char returnAfterSourceHandled) {
  Record(@"CFRunLoopRunInMode(%@, %g, %d)", (NSString*)mode, seconds, returnAfterSourceHandled);
  NSString* const native = nativeMode(mode);
  keepAlive(native);
  NSDate* const end = [NSDate dateWithTimeIntervalSinceNow:UIWaitsAreSkipped ? 0 : seconds];
  if (UIWaitsAreSkipped) runOnce(native, end);
  while ([end timeIntervalSinceNow] > 0) {
    @autoreleasepool {
      runOnce(native, end);
    }
    if (returnAfterSourceHandled) return 4;
  }
  return 3;
}

void UIRunFor(NSTimeInterval seconds) {
  keepAlive(NSDefaultRunLoopMode);
  NSDate* const end = [NSDate dateWithTimeIntervalSinceNow:seconds];
  do {
    @autoreleasepool {
      runOnce(NSDefaultRunLoopMode, end);
    }
  } while ([end timeIntervalSinceNow] > 0);
}

// --- the program

UIApplication* UIApplicationMake(NSString* className) {
  sharedApplication = [[NSClassFromString(className ? className : @"UIApplication") alloc] init];
  return sharedApplication;
}

int UIApplicationMain(int argc, char** argv, NSString* className, NSString* delegateClassName) {
  (void)argc;
  (void)argv;
  @autoreleasepool {
    UIApplication* const application = UIApplicationMake(className);
    id<UIApplicationDelegate> delegate = [[NSClassFromString(delegateClassName) alloc] init];
    [delegate application:application didFinishLaunchingWithOptions:nil];
  }
  for (;;) UIRunFor(1000);
}

// --- fingers

static void sendFinger(UITouch* touch, UITouchPhase phase) {
  UIEvent* const event = [[UIApplication sharedApplication] _touchesEvent];
  [touch setTimestamp:CACurrentMediaTime()];
  [touch setPhase:phase];
  [event _clearTouches];
  [event _addTouch:touch forDelayedDelivery:NO];
  [[UIApplication sharedApplication] sendEvent:event];
}

void UIFingerTap(UIWindow* window, CGPoint point) {
  UITouch* const touch = [[[UITouch alloc] init] autorelease];
  [touch setWindow:window];
  [touch setTapCount:1];
  [touch _setLocationInWindow:point resetPrevious:YES];
  [touch setView:[window hitTest:point withEvent:nil]];
  sendFinger(touch, 0);
  sendFinger(touch, 3);
}

// --- the system's version

@implementation NSProcessInfo (TarniVersion)

- (BOOL)isOperatingSystemAtLeastVersion:(NSOperatingSystemVersion)version {
  extern NSOperatingSystemVersion UISystemVersion;
  if (UISystemVersion.majorVersion != version.majorVersion) {
    return UISystemVersion.majorVersion > version.majorVersion;
  }
  return UISystemVersion.minorVersion >= version.minorVersion;
}

@end

NSOperatingSystemVersion UISystemVersion = {12, 0, 0};
