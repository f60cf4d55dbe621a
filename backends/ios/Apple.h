// What the backend asks of Apple's frameworks: the only place that names their headers.
//
// With Apple's SDK the public part comes from the SDK. Without one (the double of UIKit on Linux,
// the cross build against stubs) Foundation comes from whatever the include path offers, and the
// declarations below stand for the rest. The private part at the end is never in an SDK: its
// selectors are asked for with `respondsToSelector:` before they are sent.
#pragma once

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#if __has_include(<QuartzCore/QuartzCore.h>)
#import <QuartzCore/QuartzCore.h>
#import <UIKit/UIKit.h>
#else

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// --- C: Core Foundation, Core Graphics, Mach, runtime

#ifdef GNUSTEP
typedef NSPoint CGPoint;
typedef NSSize CGSize;
typedef NSRect CGRect;
#endif

typedef const void* CFTypeRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef CFStringRef CFRunLoopMode;
typedef double CFTimeInterval;
typedef int32_t CFRunLoopRunResult;
typedef struct __CFRunLoop* CFRunLoopRef;
typedef struct __CFRunLoopObserver* CFRunLoopObserverRef;
typedef unsigned long CFOptionFlags;
typedef CFOptionFlags CFRunLoopActivity;
typedef struct CGColor* CGColorRef;

extern const CFRunLoopMode kCFRunLoopDefaultMode;
extern const CFAllocatorRef kCFAllocatorDefault;
void CFRelease(CFTypeRef object);
CFRunLoopRunResult CFRunLoopRunInMode(CFRunLoopMode mode, CFTimeInterval seconds,
                                      unsigned char returnAfterSourceHandled);

// NOLINTNEXTLINE(readability-identifier-naming): Apple's names
enum { kCFRunLoopBeforeWaiting = 1UL << 5, kCFRunLoopAfterWaiting = 1UL << 6 };
typedef void (*CFRunLoopObserverCallBack)(CFRunLoopObserverRef observer, CFRunLoopActivity activity,
                                          void* info);
typedef struct CFRunLoopObserverContext CFRunLoopObserverContext;
extern const CFRunLoopMode kCFRunLoopCommonModes;
CFRunLoopRef CFRunLoopGetMain(void);
CFRunLoopObserverRef CFRunLoopObserverCreate(CFAllocatorRef allocator, CFOptionFlags activities,
                                             unsigned char repeats, long order,
                                             CFRunLoopObserverCallBack callout,
                                             CFRunLoopObserverContext* context);
void CFRunLoopAddObserver(CFRunLoopRef loop, CFRunLoopObserverRef observer, CFRunLoopMode mode);
CFTimeInterval CACurrentMediaTime(void);
uint64_t mach_absolute_time(void);

struct CGAffineTransform {
  CGFloat a, b, c, d, tx, ty;
};
typedef struct CGAffineTransform CGAffineTransform;

size_t CGColorGetNumberOfComponents(CGColorRef color);
const CGFloat* CGColorGetComponents(CGColorRef color);

typedef uintptr_t objc_AssociationPolicy;
enum { OBJC_ASSOCIATION_ASSIGN = 0, OBJC_ASSOCIATION_RETAIN_NONATOMIC = 1 };
id objc_getAssociatedObject(id object, const void* key);
void objc_setAssociatedObject(id object, const void* key, id value, objc_AssociationPolicy policy);

#ifdef __cplusplus
}
#endif

@class CALayer, CAAnimation, UIApplication, UIColor, UIEvent, UIGestureRecognizer, UIImage,
    UIScreen, UITouch, UIView, UIWindow;

// --- QuartzCore

@interface CAAnimation : NSObject
@property CFTimeInterval beginTime;
@property CFTimeInterval duration;
@property float repeatCount;
@property CFTimeInterval repeatDuration;
@end

@interface CALayer : NSObject
@property CGFloat borderWidth;
@property CGColorRef borderColor;
@property(getter=isHidden) BOOL hidden;
@property float speed;
@property(readonly) CALayer* superlayer;
@property(copy) NSArray* sublayers;
- (NSArray*)animationKeys;
- (CAAnimation*)animationForKey:(NSString*)key;
@end

@interface CATransaction : NSObject
+ (void)flush;
@end

// --- UIKit

@interface UIColor : NSObject
+ (UIColor*)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
@property(nonatomic, readonly) CGColorRef CGColor;
@end

@interface UIColor (Drawing)
- (void)setFill;
@end

@interface UIImage : NSObject
@property(nonatomic, readonly) CGSize size;
@property(nonatomic, readonly) CGFloat scale;
- (void)drawAtPoint:(CGPoint)point;
@end

#ifdef __cplusplus
extern "C" {
#endif
void UIGraphicsBeginImageContextWithOptions(CGSize size, BOOL opaque, CGFloat scale);
UIImage* UIGraphicsGetImageFromCurrentImageContext(void);
void UIGraphicsEndImageContext(void);
void UIRectFill(CGRect rect);
NSData* UIImageJPEGRepresentation(UIImage* image, CGFloat quality);
#ifdef __cplusplus
}
#endif

@interface UIScreen : NSObject
+ (UIScreen*)mainScreen;
@property(nonatomic, readonly) CGRect bounds;
@property(nonatomic, readonly) CGFloat scale;
@end

@interface UIResponder : NSObject
- (BOOL)canBecomeFirstResponder;
- (BOOL)becomeFirstResponder;
- (BOOL)isFirstResponder;
@end

@interface UIResponder (StandardEditActions)
- (void)selectAll:(id)sender;
@end

@protocol UIKeyInput
- (void)insertText:(NSString*)text;
- (void)deleteBackward;
@end

@interface UIView : UIResponder
@property(nonatomic, readonly) CALayer* layer;
@property(nonatomic) CGRect frame;
@property(nonatomic) CGRect bounds;
@property(nonatomic) CGPoint center;
@property(nonatomic) CGAffineTransform transform;
@property(nonatomic, getter=isHidden) BOOL hidden;
@property(nonatomic, getter=isOpaque) BOOL opaque;
@property(nonatomic) BOOL clipsToBounds;
@property(nonatomic, getter=isUserInteractionEnabled) BOOL userInteractionEnabled;
@property(nonatomic) NSInteger tag;
@property(nonatomic, readonly) UIView* superview;
@property(nonatomic, readonly, copy) NSArray* subviews;
@property(nonatomic, readonly) UIWindow* window;
@property(nonatomic, copy) NSArray* gestureRecognizers;
- (UIView*)hitTest:(CGPoint)point withEvent:(UIEvent*)event;
- (CGPoint)convertPoint:(CGPoint)point toView:(UIView*)view;
- (CGPoint)convertPoint:(CGPoint)point fromView:(UIView*)view;
- (BOOL)drawViewHierarchyInRect:(CGRect)rect afterScreenUpdates:(BOOL)afterUpdates;
@end

typedef uint64_t UIAccessibilityTraits;
#ifdef __cplusplus
extern "C" {
#endif
extern UIAccessibilityTraits UIAccessibilityTraitSelected;
extern UIAccessibilityTraits UIAccessibilityTraitNotEnabled;
#ifdef __cplusplus
}
#endif

@interface NSObject (UIAccessibility)
@property(nonatomic, copy) NSString* accessibilityLabel;
@property(nonatomic, copy) NSString* accessibilityValue;
@property(nonatomic, copy) NSString* accessibilityHint;
@property(nonatomic, copy) NSString* accessibilityLanguage;
@property(nonatomic, copy) NSString* accessibilityIdentifier;
@property(nonatomic) CGRect accessibilityFrame;
@property(nonatomic) UIAccessibilityTraits accessibilityTraits;
@property(nonatomic, retain) NSArray* accessibilityElements;
- (NSInteger)accessibilityElementCount;
- (id)accessibilityElementAtIndex:(NSInteger)index;
@end

@interface UIWindow : UIView
- (void)makeKeyWindow;
@end

@interface UIGestureRecognizer : NSObject
@end

@interface UIControl : UIView
- (void)sendActionsForControlEvents:(NSUInteger)events;
@end

@interface UILabel : UIView
@property(nonatomic, copy) NSString* text;
@end

@interface UIButton : UIControl
@property(nonatomic, readonly) NSString* currentTitle;
@end

@class UITextField;

@protocol UITextFieldDelegate <NSObject>
@optional
- (BOOL)textFieldShouldReturn:(UITextField*)field;
@end

@interface UITextField : UIControl
@property(nonatomic, assign) id<UITextFieldDelegate> delegate;
@property(nonatomic, copy) NSString* text;
@property(nonatomic, copy) NSString* placeholder;
@property(nonatomic, getter=isSecureTextEntry) BOOL secureTextEntry;
@end

@interface UISwitch : UIControl
@property(nonatomic, getter=isOn) BOOL on;
@end

@interface UISegmentedControl : UIControl
@property(nonatomic, readonly) NSUInteger numberOfSegments;
@property(nonatomic) NSInteger selectedSegmentIndex;
- (NSString*)titleForSegmentAtIndex:(NSUInteger)index;
@end

@interface UIScrollView : UIView
@property(nonatomic) CGPoint contentOffset;
- (void)setContentOffset:(CGPoint)offset animated:(BOOL)animated;
@end

@interface UITextView : UIScrollView
@property(nonatomic, copy) NSString* text;
@end

@interface UITableViewCell : UIView
@property(nonatomic, readonly) UILabel* textLabel;
@property(nonatomic, getter=isSelected) BOOL selected;
@end

typedef NSInteger UITouchPhase;
typedef NSInteger UIEventType;

@interface UITouch : NSObject
@property(nonatomic, readonly) NSTimeInterval timestamp;
@property(nonatomic, readonly) UITouchPhase phase;
@property(nonatomic, readonly) NSUInteger tapCount;
@property(nonatomic, readonly) UIWindow* window;
@property(nonatomic, readonly) UIView* view;
- (CGPoint)locationInView:(UIView*)view;
@end

@interface UIEvent : NSObject
@property(nonatomic, readonly) UIEventType type;
- (NSSet*)allTouches;
@end

@interface UIApplication : UIResponder
+ (UIApplication*)sharedApplication;
@property(nonatomic, readonly) UIWindow* keyWindow;
@property(nonatomic, readonly) NSArray* windows;
- (void)sendEvent:(UIEvent*)event;
- (BOOL)canOpenURL:(NSURL*)url;
- (void)openURL:(NSURL*)url options:(NSDictionary*)options completionHandler:(void*)completion;
@end

@interface UIViewController : UIResponder
- (void)viewWillAppear:(BOOL)animated;
- (void)viewDidAppear:(BOOL)animated;
@end

#endif

// --- classes that an SDK marks as gone or never had; found by name

@interface NSObject (TarniLegacyUIKit)
// UITableViewCell
- (NSString*)text;
// UIAlertView
- (id)initWithTitle:(NSString*)title
              message:(NSString*)message
             delegate:(id)delegate
    cancelButtonTitle:(NSString*)cancelButtonTitle
    otherButtonTitles:(NSString*)otherButtonTitles, ... NS_REQUIRES_NIL_TERMINATION;
- (void)show;
- (void)dismissWithClickedButtonIndex:(NSInteger)index animated:(BOOL)animated;
// UIWebView and its browser view
- (BOOL)isLoading;
- (NSString*)stringByEvaluatingJavaScriptFromString:(NSString*)script;
- (void)tapInteractionWithLocation:(CGPoint)point;
// WKWebView, which needs a framework of its own
- (NSURL*)URL;
- (void)evaluateJavaScript:(NSString*)script
         completionHandler:(void (^)(id result, NSError* error))handler;
@end

// --- what Foundation on Linux lacks or declares otherwise

#ifdef GNUSTEP
typedef struct {
  NSInteger majorVersion, minorVersion, patchVersion;
} NSOperatingSystemVersion;

@interface NSProcessInfo (TarniVersion)
- (BOOL)isOperatingSystemAtLeastVersion:(NSOperatingSystemVersion)version;
@end
#endif

// --- private setters

typedef struct __IOHIDEvent* IOHIDEventRef;

@interface UIApplication (TarniPrivate)
- (UIEvent*)_touchesEvent;
@end

@interface UIEvent (TarniPrivate)
- (void)_clearTouches;
- (void)_addTouch:(UITouch*)touch forDelayedDelivery:(BOOL)delayed;
- (void)_setHIDEvent:(IOHIDEventRef)event;
- (void)_setGSEvent:(const void*)event;
- (void)_setTimestamp:(NSTimeInterval)timestamp;
@end

@interface UITouch (TarniPrivate)
- (void)setWindow:(UIWindow*)window;
- (void)setTapCount:(NSUInteger)count;
- (void)_setLocationInWindow:(CGPoint)point resetPrevious:(BOOL)resetPrevious;
- (void)setView:(UIView*)view;
- (void)setPhase:(UITouchPhase)phase;
- (void)_setIsFirstTouchForView:(BOOL)first;
- (void)setIsTap:(BOOL)tap;
- (void)setTimestamp:(NSTimeInterval)timestamp;
- (void)setGestureView:(UIView*)view;
- (void)_setHidEvent:(IOHIDEventRef)event;
@end

// --- IOKit's functions for human-interface records: for their types, since they are looked up by
// name

#ifdef __cplusplus
extern "C" {
#endif
IOHIDEventRef IOHIDEventCreateDigitizerEvent(CFAllocatorRef allocator, uint64_t timeStamp,
                                             uint32_t transducerType, uint32_t index,
                                             uint32_t identity, uint32_t eventMask,
                                             uint32_t buttonMask, double x, double y, double z,
                                             double tipPressure, double barrelPressure,
                                             unsigned char range, unsigned char touch,
                                             uint32_t options);
IOHIDEventRef IOHIDEventCreateDigitizerFingerEventWithQuality(
    CFAllocatorRef allocator, uint64_t timeStamp, uint32_t index, uint32_t identity,
    uint32_t eventMask, double x, double y, double z, double tipPressure, double twist,
    double minorRadius, double majorRadius, double quality, double density, double irregularity,
    unsigned char range, unsigned char touch, uint32_t options);
void IOHIDEventSetIntegerValue(IOHIDEventRef event, uint32_t field, long value);
void IOHIDEventAppendEvent(IOHIDEventRef parent, IOHIDEventRef child, uint32_t options);
#ifdef __cplusplus
}
#endif
