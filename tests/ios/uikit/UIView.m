// UIResponder, UIView, UIWindow and gesture recognizers: the tree, geometry, hit testing and the
// way of a touch up the responder chain.
#import "tests/ios/uikit/Drawing.h"
#import "tests/ios/uikit/State.h"

#include <math.h>

typedef struct {
  CGPoint center;
  CGRect bounds;
  CGAffineTransform transform;
  NSInteger tag;
  BOOL hidden, opaque, clipsToBounds, ignoresTouches;
  UIView* superview;
} ViewState;

// Views are where they stand: nothing turns or scales them.
static const CGAffineTransform kIdentity = {1, 0, 0, 1, 0, 0};

@implementation UIResponder

- (UIResponder*)nextResponder {
  return nil;
}
- (BOOL)canBecomeFirstResponder {
  return NO;
}
- (BOOL)becomeFirstResponder {
  return NO;
}
- (BOOL)resignFirstResponder {
  return NO;
}
- (BOOL)isFirstResponder {
  return NO;
}

- (void)touchesBegan:(NSSet*)touches withEvent:(UIEvent*)event {
  [[self nextResponder] touchesBegan:touches withEvent:event];
}

- (void)touchesMoved:(NSSet*)touches withEvent:(UIEvent*)event {
  [[self nextResponder] touchesMoved:touches withEvent:event];
}

- (void)touchesEnded:(NSSet*)touches withEvent:(UIEvent*)event {
  [[self nextResponder] touchesEnded:touches withEvent:event];
}

@end

@implementation NSObject (UIAccessibility)

KEPT(NSString*, accessibilityLabel, setAccessibilityLabel)
KEPT(NSString*, accessibilityValue, setAccessibilityValue)
KEPT(NSString*, accessibilityHint, setAccessibilityHint)
KEPT(NSString*, accessibilityLanguage, setAccessibilityLanguage)
KEPT(NSString*, accessibilityIdentifier, setAccessibilityIdentifier)
KEPT(NSArray*, accessibilityElements, setAccessibilityElements)

- (CGRect)accessibilityFrame {
  return [kept(self, "accessibilityFrame") rectValue];
}
- (void)setAccessibilityFrame:(CGRect)frame {
  keep(self, "accessibilityFrame", [NSValue valueWithRect:frame]);
}
- (UIAccessibilityTraits)accessibilityTraits {
  return [kept(self, "accessibilityTraits") unsignedLongLongValue];
}
- (void)setAccessibilityTraits:(UIAccessibilityTraits)traits {
  keep(self, "accessibilityTraits", @(traits));
}
- (NSInteger)accessibilityElementCount {
  return NSNotFound;
}
- (id)accessibilityElementAtIndex:(NSInteger)index {
  return nil;
}

@end

@implementation UIAccessibilityElement

- (id)initWithAccessibilityContainer:(id)container {
  return [super init];
}

@end

UIAccessibilityTraits UIAccessibilityTraitSelected = 1 << 3;
UIAccessibilityTraits UIAccessibilityTraitNotEnabled = 1 << 8;

@implementation UIView

STATE_IS(ViewState)

- (id)initWithFrame:(CGRect)frame {
  if ((self = [super init])) {
    ViewState* const state = STATE(ViewState);
    state->transform = kIdentity;
    keep(self, "layer", [[[CALayer alloc] init] autorelease]);
    keep(self, "subviews", [NSMutableArray array]);
    keep(self, "gestureRecognizers", [NSMutableArray array]);
    [self setFrame:frame];
  }
  return self;
}

- (id)init {
  return [self initWithFrame:NSMakeRect(0, 0, 0, 0)];
}

- (void)dealloc {
  for (UIView* view in kept(self, "subviews"))
    ((ViewState*)object_getIndexedIvars(view))->superview = nil;
  [super dealloc];
}

// --- the tree

- (CALayer*)layer {
  return kept(self, "layer");
}
- (UIView*)superview {
  return STATE(ViewState)->superview;
}
- (NSArray*)subviews {
  return [[kept(self, "subviews") copy] autorelease];
}
- (UIResponder*)nextResponder {
  return [self superview];
}
- (UIWindow*)window {
  return [[self superview] window];
}

- (BOOL)isDescendantOfView:(UIView*)ancestor {
  for (UIView* view = self; view; view = [view superview]) {
    if (view == ancestor) return YES;
  }
  return NO;
}

- (void)addSubview:(UIView*)view {
  [[view retain] autorelease];
  [view removeFromSuperview];
  [kept(self, "subviews") addObject:view];
  [[self layer] addSublayer:[view layer]];
  ((ViewState*)object_getIndexedIvars(view))->superview = self;
}

- (void)removeFromSuperview {
  UIView* const above = [self superview];
  if (!above) return;
  if ([self isFirstResponder]) [self resignFirstResponder];
  STATE(ViewState)->superview = nil;
  [[self layer] removeFromSuperlayer];
  [kept(above, "subviews") removeObjectIdenticalTo:self];
}

// --- geometry

PROPERTY(ViewState, CGRect, bounds, bounds, setBounds)
PROPERTY(ViewState, CGPoint, center, center, setCenter)
PROPERTY(ViewState, CGAffineTransform, transform, transform, setTransform)

- (CGRect)frame {
  const ViewState* const state = STATE(ViewState);
  const CGSize size = state->bounds.size;
  return NSMakeRect(state->center.x - size.width / 2, state->center.y - size.height / 2, size.width,
                    size.height);
}

- (void)setFrame:(CGRect)frame {
  ViewState* const state = STATE(ViewState);
  state->bounds.size = frame.size;
  state->center = NSMakePoint(NSMidX(frame), NSMidY(frame));
}

- (CGPoint)toSuperview:(CGPoint)point {
  const ViewState* const state = STATE(ViewState);
  return NSMakePoint(point.x - NSMidX(state->bounds) + state->center.x,
                     point.y - NSMidY(state->bounds) + state->center.y);
}

- (CGPoint)fromSuperview:(CGPoint)point {
  const ViewState* const state = STATE(ViewState);
  return NSMakePoint(point.x - state->center.x + NSMidX(state->bounds),
                     point.y - state->center.y + NSMidY(state->bounds));
}

// In the coordinates that all windows stand in.
- (CGPoint)toScreen:(CGPoint)point {
  for (UIView* view = self; view; view = [view superview]) point = [view toSuperview:point];
  return point;
}

- (CGPoint)fromScreen:(CGPoint)point {
  if ([self superview]) point = [[self superview] fromScreen:point];
  return [self fromSuperview:point];
}

- (CGPoint)convertPoint:(CGPoint)point toView:(UIView*)view {
  UIView* const target = view ? view : (UIView*)[self window];
  const CGPoint onScreen = [self toScreen:point];
  return target ? [target fromScreen:onScreen] : onScreen;
}

- (CGPoint)convertPoint:(CGPoint)point fromView:(UIView*)view {
  UIView* const source = view ? view : (UIView*)[self window];
  return [self fromScreen:source ? [source toScreen:point] : point];
}

- (BOOL)pointInside:(CGPoint)point withEvent:(UIEvent*)event {
  const CGRect bounds = [self bounds];
  return point.x >= NSMinX(bounds) && point.x < NSMaxX(bounds) && point.y >= NSMinY(bounds) &&
         point.y < NSMaxY(bounds);
}

- (UIView*)hitTest:(CGPoint)point withEvent:(UIEvent*)event {
  const ViewState* const state = STATE(ViewState);
  if (state->hidden || state->ignoresTouches) return nil;
  if (![self pointInside:point withEvent:event]) return nil;
  for (UIView* view in [[self subviews] reverseObjectEnumerator]) {
    UIView* const hit = [view hitTest:[view fromSuperview:point] withEvent:event];
    if (hit) return hit;
  }
  return self;
}

// --- state

- (BOOL)isHidden {
  return STATE(ViewState)->hidden;
}
- (void)setHidden:(BOOL)hidden {
  STATE(ViewState)->hidden = hidden;
  [[self layer] setHidden:hidden];
}
PROPERTY(ViewState, BOOL, opaque, isOpaque, setOpaque)
PROPERTY(ViewState, BOOL, clipsToBounds, clipsToBounds, setClipsToBounds)
- (BOOL)isUserInteractionEnabled {
  return !STATE(ViewState)->ignoresTouches;
}
- (void)setUserInteractionEnabled:(BOOL)enabled {
  STATE(ViewState)->ignoresTouches = !enabled;
}
PROPERTY(ViewState, NSInteger, tag, tag, setTag)
KEPT(UIColor*, backgroundColor, setBackgroundColor)

- (BOOL)isFirstResponder {
  UIWindow* const window = [self window];
  return window && kept(window, "firstResponder") == self;
}

- (BOOL)becomeFirstResponder {
  if (![self canBecomeFirstResponder] || ![self window]) return NO;
  keep([self window], "firstResponder", self);
  return YES;
}

- (BOOL)resignFirstResponder {
  if ([self isFirstResponder]) keep([self window], "firstResponder", nil);
  return YES;
}

// --- gestures

- (NSArray*)gestureRecognizers {
  return kept(self, "gestureRecognizers");
}
- (void)setGestureRecognizers:(NSArray*)recognizers {
  [kept(self, "gestureRecognizers") setArray:recognizers];
}
- (void)addGestureRecognizer:(UIGestureRecognizer*)recognizer {
  [kept(self, "gestureRecognizers") addObject:recognizer];
}

// --- drawing

- (NSString*)shownText {
  return nil;
}

- (BOOL)drawViewHierarchyInRect:(CGRect)rect afterScreenUpdates:(BOOL)afterUpdates {
  DrawView(self, rect);
  return YES;
}

- (NSString*)description {
  return [NSString stringWithFormat:@"<%@ %@>", [self class], NSStringFromRect([self frame])];
}

@end

@implementation UIGestureRecognizer

- (id)initWithTarget:(id)target action:(SEL)action {
  if ((self = [super init])) {
    keep(self, "target", [NSValue valueWithNonretainedObject:target]);
    keep(self, "action", NSStringFromSelector(action));
  }
  return self;
}

- (void)recognize {
  [[kept(self, "target") nonretainedObjectValue]
      performSelector:NSSelectorFromString(kept(self, "action"))
           withObject:self];
}

@end

@implementation UITapGestureRecognizer
@end

@implementation UIViewController

KEPT(UIView*, view, setView)

- (void)viewWillAppear:(BOOL)animated {
}

- (void)viewDidAppear:(BOOL)animated {
}

@end

@implementation UIWindow

- (id)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    [self setOpaque:YES];
    [self setBackgroundColor:[UIColor whiteColor]];
  }
  return self;
}

- (UIWindow*)window {
  return self;
}
- (UIResponder*)nextResponder {
  return [UIApplication sharedApplication];
}

- (void)makeKeyWindow {
  [[UIApplication sharedApplication] setKeyWindow:self];
}

- (void)makeKeyAndVisible {
  [[UIApplication sharedApplication] addWindow:self];
  [[UIApplication sharedApplication] setKeyWindow:self];
}

- (UIViewController*)rootViewController {
  return kept(self, "rootViewController");
}

- (void)setRootViewController:(UIViewController*)controller {
  keep(self, "rootViewController", controller);
  [[controller view] setFrame:[self bounds]];
  [controller viewWillAppear:NO];
  [self addSubview:[controller view]];
  [controller viewDidAppear:NO];
}

// Tap recognizers of the touched view and those above it come after the views themselves, unless a
// control takes the touch.
- (void)recognizeTapOn:(UIView*)touched {
  for (UIView* view = touched; view; view = [view superview]) {
    for (UIGestureRecognizer* recognizer in [view gestureRecognizers]) {
      if ([recognizer isKindOfClass:[UITapGestureRecognizer class]]) [recognizer recognize];
    }
    if ([view isKindOfClass:[UIControl class]]) return;
  }
}

- (void)sendEvent:(UIEvent*)event {
  for (UITouch* touch in [event allTouches]) {
    if ([touch window] != self) continue;
    UIView* const view = [touch view];
    NSSet* const touches = [NSSet setWithObject:touch];
    switch ([touch phase]) {
      case 0:
        if (view && [[UIApplication sharedApplication] keyWindow] != self) [self makeKeyWindow];
        [view touchesBegan:touches withEvent:event];
        break;
      case 1:
        [view touchesMoved:touches withEvent:event];
        break;
      case 3:
        [view touchesEnded:touches withEvent:event];
        [self recognizeTapOn:view];
        break;
    }
  }
}

@end
