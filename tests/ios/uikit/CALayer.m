// QuartzCore: layers with values under any key, animations that only stand there.
#import "tests/ios/uikit/State.h"

#include <time.h>

typedef struct {
  CGFloat components[4];
  size_t count;
} ColorState;

typedef struct {
  CGFloat borderWidth, cornerRadius;
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

- (CFTimeInterval)beginTime {
  return STATE(AnimationState)->beginTime;
}
- (void)setBeginTime:(CFTimeInterval)time {
  STATE(AnimationState)->beginTime = time;
}
- (CFTimeInterval)duration {
  return STATE(AnimationState)->duration;
}
- (void)setDuration:(CFTimeInterval)time {
  STATE(AnimationState)->duration = time;
}
- (CFTimeInterval)repeatDuration {
  return STATE(AnimationState)->repeatDuration;
}
- (void)setRepeatDuration:(CFTimeInterval)time {
  STATE(AnimationState)->repeatDuration = time;
}
- (float)repeatCount {
  return STATE(AnimationState)->repeatCount;
}
- (void)setRepeatCount:(float)count {
  STATE(AnimationState)->repeatCount = count;
}

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

- (CGFloat)borderWidth {
  return STATE(LayerState)->borderWidth;
}
- (void)setBorderWidth:(CGFloat)width {
  STATE(LayerState)->borderWidth = width;
}
- (CGFloat)cornerRadius {
  return STATE(LayerState)->cornerRadius;
}
- (void)setCornerRadius:(CGFloat)radius {
  STATE(LayerState)->cornerRadius = radius;
}
- (float)speed {
  return STATE(LayerState)->speed;
}
- (void)setSpeed:(float)speed {
  STATE(LayerState)->speed = speed;
}
- (BOOL)isHidden {
  return STATE(LayerState)->hidden;
}
- (void)setHidden:(BOOL)hidden {
  STATE(LayerState)->hidden = hidden;
}
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

static double monotonicSeconds(void) {
  struct timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return (double)now.tv_sec + (double)now.tv_nsec / 1e9;
}

CFTimeInterval CACurrentMediaTime(void) { return monotonicSeconds(); }

uint64_t mach_absolute_time(void) {
  struct timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return (uint64_t)now.tv_sec * 1000000000ULL + (uint64_t)now.tv_nsec;
}
