// QuartzCore: layers with values under any key, animations that only stand there.
#import "tests/ios/uikit/State.h"

#include <time.h>

typedef struct {
  CGFloat components[4];
  size_t count;
} ColorState;

typedef struct {
  CGFloat borderWidth;
  float speed;
  BOOL hidden;
  CALayer* superlayer;
} LayerState;

typedef struct {
  CFTimeInterval beginTime, duration, repeatDuration;
  float repeatCount;
} AnimationState;

@implementation UIColor

STATE_IS(ColorState)

+ (UIColor*)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha {
  UIColor* const color = [[[UIColor alloc] init] autorelease];
  *(ColorState*)object_getIndexedIvars(color) = (ColorState){{red, green, blue, alpha}, 4};
  return color;
}

// Its one component is the alpha; it is drawn black.
+ (UIColor*)colorWithPatternImage:(UIImage*)image {
  UIColor* const color = [self blackColor];
  ((ColorState*)object_getIndexedIvars(color))->count = 1;
  return color;
}

+ (UIColor*)whiteColor {
  return [self colorWithRed:1 green:1 blue:1 alpha:1];
}

+ (UIColor*)blackColor {
  return [self colorWithRed:0 green:0 blue:0 alpha:1];
}

- (id)copyWithZone:(NSZone*)zone {
  return [self retain];
}

- (CGColorRef)CGColor {
  return (CGColorRef)self;
}

- (const CGFloat*)components {
  return STATE(ColorState)->components;
}

- (size_t)count {
  return STATE(ColorState)->count;
}

@end

size_t CGColorGetNumberOfComponents(CGColorRef color) { return [(UIColor*)color count]; }

const CGFloat* CGColorGetComponents(CGColorRef color) { return [(UIColor*)color components]; }

@implementation CAAnimation

STATE_IS(AnimationState)

PROPERTY(AnimationState, CFTimeInterval, beginTime, beginTime, setBeginTime)
PROPERTY(AnimationState, CFTimeInterval, duration, duration, setDuration)
PROPERTY(AnimationState, CFTimeInterval, repeatDuration, repeatDuration, setRepeatDuration)
PROPERTY(AnimationState, float, repeatCount, repeatCount, setRepeatCount)

@end

@implementation CALayer

STATE_IS(LayerState)

- (id)init {
  if ((self = [super init])) {
    STATE(LayerState)->speed = 1;
    keep(self, "sublayers", [NSMutableArray array]);
    keep(self, "animations", [NSMutableDictionary dictionary]);
    keep(self, "values", [NSMutableDictionary dictionary]);
  }
  return self;
}

- (void)dealloc {
  for (CALayer* layer in kept(self, "sublayers")) [layer leaveSuperlayer];
  [super dealloc];
}

PROPERTY(LayerState, CGFloat, borderWidth, borderWidth, setBorderWidth)
PROPERTY(LayerState, float, speed, speed, setSpeed)
PROPERTY(LayerState, BOOL, hidden, isHidden, setHidden)
- (CGColorRef)borderColor {
  return (CGColorRef)kept(self, "borderColor");
}
- (void)setBorderColor:(CGColorRef)color {
  keep(self, "borderColor", (id)color);
}
- (CALayer*)superlayer {
  return STATE(LayerState)->superlayer;
}
- (void)leaveSuperlayer {
  STATE(LayerState)->superlayer = nil;
}
- (NSArray*)sublayers {
  return kept(self, "sublayers");
}
- (void)setSublayers:(NSArray*)layers {
  [kept(self, "sublayers") setArray:layers];
}

- (void)addSublayer:(CALayer*)layer {
  [kept(self, "sublayers") addObject:layer];
  ((LayerState*)object_getIndexedIvars(layer))->superlayer = self;
}

- (void)removeFromSuperlayer {
  CALayer* const above = [self superlayer];
  [self leaveSuperlayer];
  [kept(above, "sublayers") removeObjectIdenticalTo:self];
}

- (NSArray*)animationKeys {
  return [kept(self, "animations") allKeys];
}
- (CAAnimation*)animationForKey:(NSString*)key {
  return [kept(self, "animations") objectForKey:key];
}
- (void)addAnimation:(CAAnimation*)animation forKey:(NSString*)key {
  [kept(self, "animations") setObject:animation forKey:key];
}

- (id)valueForUndefinedKey:(NSString*)key {
  return [kept(self, "values") objectForKey:key];
}

- (void)setValue:(id)value forUndefinedKey:(NSString*)key {
  [kept(self, "values") setObject:value forKey:key];
}

@end

@implementation CATransaction

+ (void)flush {
}

@end

uint64_t mach_absolute_time(void) {
  struct timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return (uint64_t)now.tv_sec * 1000000000ULL + (uint64_t)now.tv_nsec;
}

CFTimeInterval CACurrentMediaTime(void) { return (double)mach_absolute_time() / 1e9; }
