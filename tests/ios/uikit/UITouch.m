// Touches, events with their private setters, and IOKit's digitizer calls; all of them are
// recorded.
#import "tests/ios/uikit/Record.h"
#import "tests/ios/uikit/State.h"

#include <math.h>
#include <stdlib.h>

// --- IOKit

typedef struct {
  int references;
  int serial;
  const char* kind;
} HIDEvent;

static int living = 0;

static IOHIDEventRef makeHIDEvent(const char* kind) {
  static int made = 0;
  HIDEvent* const event = malloc(sizeof *event);
  *event = (HIDEvent){1, ++made, kind};
  ++living;
  return (IOHIDEventRef)event;
}

void CFRelease(CFTypeRef object) {
  HIDEvent* const event = (HIDEvent*)object;
  if (--event->references > 0) return;
  --living;
  free(event);
}

static void hold(IOHIDEventRef* held, IOHIDEventRef event) {
  if (event) ++((HIDEvent*)event)->references;
  if (*held) CFRelease(*held);
  *held = event;
}

int LivingHIDEvents(void) { return living; }

const CFAllocatorRef kCFAllocatorDefault = NULL;

static NSString* nameOf(IOHIDEventRef event) {
  if (!event) return @"nil";
  const HIDEvent* const known = (HIDEvent*)event;
  return
      [NSString stringWithFormat:@"%s %u", known->kind, RecordNumber(known->kind, known->serial)];
}

// The uptime that Foundation tells on Linux counts whole seconds.
static NSString* timeOf(double time) {
  return fabs(time - CACurrentMediaTime()) < 2 ? @"now" : [NSString stringWithFormat:@"%g", time];
}

static NSString* ticksOf(uint64_t ticks) {
  return [NSString stringWithFormat:@"ticks%u", RecordNumber("ticks", (double)ticks)];
}

IOHIDEventRef IOHIDEventCreateDigitizerEvent(CFAllocatorRef allocator, uint64_t timeStamp,
                                             uint32_t transducer, uint32_t index, uint32_t identity,
                                             uint32_t eventMask, uint32_t buttonMask, double x,
                                             double y, double z, double tipPressure,
                                             double barrelPressure, unsigned char range,
                                             unsigned char touch, uint32_t options) {
  const IOHIDEventRef event = makeHIDEvent("hand");
  Record(
      @"%@ = IOHIDEventCreateDigitizerEvent(%s, %@, transducer %u, index %u, identity %u, mask %u, "
      @"buttons %u, %g %g %g, pressure %g %g, range %d, touch %d, options %u)",
      nameOf(event), allocator == kCFAllocatorDefault ? "default" : "other", ticksOf(timeStamp),
      transducer, index, identity, eventMask, buttonMask, x, y, z, tipPressure, barrelPressure,
      range, touch, options);
  return event;
}

IOHIDEventRef IOHIDEventCreateDigitizerFingerEventWithQuality(
    CFAllocatorRef allocator, uint64_t timeStamp, uint32_t index, uint32_t identity,
    uint32_t eventMask, double x, double y, double z, double tipPressure, double twist,
    double minorRadius, double majorRadius, double quality, double density, double irregularity,
    unsigned char range, unsigned char touch, uint32_t options) {
  const IOHIDEventRef event = makeHIDEvent("finger");
  Record(@"%@ = IOHIDEventCreateDigitizerFingerEventWithQuality(%s, %@, index %u, identity %u, "
         @"mask %u, "
         @"%g %g %g, pressure %g, twist %g, radii %g %g, quality %g %g %g, range %d, touch %d, "
         @"options %u)",
         nameOf(event), allocator == kCFAllocatorDefault ? "default" : "other", ticksOf(timeStamp),
         index, identity, eventMask, x, y, z, tipPressure, twist, minorRadius, majorRadius, quality,
         density, irregularity, range, touch, options);
  return event;
}

void IOHIDEventSetIntegerValue(IOHIDEventRef event, uint32_t field, long value) {
  Record(@"IOHIDEventSetIntegerValue(%@, 0x%X, %ld)", nameOf(event), field, value);
}

void IOHIDEventAppendEvent(IOHIDEventRef parent, IOHIDEventRef child, uint32_t options) {
  Record(@"IOHIDEventAppendEvent(%@, %@, %u)", nameOf(parent), nameOf(child), options);
}

// --- touches

typedef struct {
  int serial;
  UITouchPhase phase;
  NSUInteger tapCount;
  NSTimeInterval timestamp;
  CGPoint location;
  IOHIDEventRef hidEvent;
} TouchState;

@implementation UITouch

STATE_IS(TouchState)

- (id)init {
  static int made = 0;
  if ((self = [super init])) STATE(TouchState)->serial = ++made;
  return self;
}

- (void)dealloc {
  hold(&STATE(TouchState)->hidEvent, NULL);
  [super dealloc];
}

- (NSString*)recordName {
  return [NSString stringWithFormat:@"touch %u", RecordNumber("touch", STATE(TouchState)->serial)];
}

- (UITouchPhase)phase {
  return STATE(TouchState)->phase;
}
- (NSUInteger)tapCount {
  return STATE(TouchState)->tapCount;
}
- (NSTimeInterval)timestamp {
  return STATE(TouchState)->timestamp;
}
- (UIWindow*)window {
  return kept(self, "window");
}
- (UIView*)view {
  return kept(self, "view");
}

- (CGPoint)locationInView:(UIView*)view {
  const CGPoint point = STATE(TouchState)->location;
  return view ? [[self window] convertPoint:point toView:view] : point;
}

- (void)setWindow:(UIWindow*)window {
  Record(@"%@ setWindow: %@", [self recordName], RecordName(window));
  keep(self, "window", window);
}

- (void)setView:(UIView*)view {
  Record(@"%@ setView: %@", [self recordName], RecordName(view));
  keep(self, "view", view);
}

- (void)setTapCount:(NSUInteger)count {
  Record(@"%@ setTapCount: %lu", [self recordName], (unsigned long)count);
  STATE(TouchState)->tapCount = count;
}

- (void)_setLocationInWindow:(CGPoint)point resetPrevious:(BOOL)resetPrevious {
  Record(@"%@ _setLocationInWindow: %g %g resetPrevious: %d", [self recordName], point.x, point.y,
         resetPrevious);
  STATE(TouchState)->location = point;
}

- (void)setPhase:(UITouchPhase)phase {
  Record(@"%@ setPhase: %ld", [self recordName], (long)phase);
  STATE(TouchState)->phase = phase;
}

- (void)_setIsFirstTouchForView:(BOOL)first {
  Record(@"%@ _setIsFirstTouchForView: %d", [self recordName], first);
}

- (void)setIsTap:(BOOL)tap {
  Record(@"%@ setIsTap: %d", [self recordName], tap);
}

- (void)setTimestamp:(NSTimeInterval)timestamp {
  Record(@"%@ setTimestamp: %@", [self recordName], timeOf(timestamp));
  STATE(TouchState)->timestamp = timestamp;
}

- (void)setGestureView:(UIView*)view {
  Record(@"%@ setGestureView: %@", [self recordName], RecordName(view));
}

- (void)_setHidEvent:(IOHIDEventRef)event {
  Record(@"%@ _setHidEvent: %@", [self recordName], nameOf(event));
  hold(&STATE(TouchState)->hidEvent, event);
}

@end

// --- events

typedef struct {
  IOHIDEventRef hidEvent;
} EventState;

@implementation UIEvent

STATE_IS(EventState)

- (id)init {
  if ((self = [super init])) keep(self, "touches", [NSMutableSet set]);
  return self;
}

- (void)dealloc {
  hold(&STATE(EventState)->hidEvent, NULL);
  [super dealloc];
}

- (UIEventType)type {
  return [kept(self, "type") integerValue];
}
- (NSSet*)allTouches {
  return [[kept(self, "touches") copy] autorelease];
}

- (void)_clearTouches {
  Record(@"event _clearTouches");
  [kept(self, "touches") removeAllObjects];
}

- (void)_addTouch:(UITouch*)touch forDelayedDelivery:(BOOL)delayed {
  Record(@"event _addTouch: %@ forDelayedDelivery: %d", [touch recordName], delayed);
  [kept(self, "touches") addObject:touch];
}

- (void)_setHIDEvent:(IOHIDEventRef)event {
  Record(@"event _setHIDEvent: %@", nameOf(event));
  hold(&STATE(EventState)->hidEvent, event);
}

// The fields at the offsets at which the system reads them.
- (void)_setGSEvent:(const void*)event {
  const char* const bytes = event;
#define FIELD(Type, offset) (*(const Type*)(bytes + (offset)))
  Record(@"event _setGSEvent: flags 0x%08X type %u at %g %g, %g %g, size %g %g, %g %g",
         FIELD(uint32_t, 8), FIELD(uint32_t, 12), FIELD(float, 20), FIELD(float, 24),
         FIELD(float, 28), FIELD(float, 32), FIELD(float, 104), FIELD(float, 108),
         FIELD(float, 112), FIELD(float, 116));
#undef FIELD
}

- (void)_setTimestamp:(NSTimeInterval)timestamp {
  Record(@"event _setTimestamp: %@", timeOf(timestamp));
}

@end
