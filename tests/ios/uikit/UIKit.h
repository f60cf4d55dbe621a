// The double of UIKit: what an application of UIKit's is written against, on top of what the
// backend declares for itself. It keeps views, lays them in windows, hit tests, dispatches touches
// to them and draws them. Main thread, as UIKit.
#pragma once

#import "backends/ios/Apple.h"

@class UIViewController;

static inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
  return NSMakeRect(x, y, width, height);
}

// --- QuartzCore

@interface CALayer (Application)
- (void)addSublayer:(CALayer*)layer;
- (void)removeFromSuperlayer;
- (void)addAnimation:(CAAnimation*)animation forKey:(NSString*)key;
@end

// --- views

@interface UIColor (Application)
+ (UIColor*)whiteColor;
+ (UIColor*)blackColor;
+ (UIColor*)colorWithPatternImage:(UIImage*)image;
@end

@interface UIResponder (Application)
- (UIResponder*)nextResponder;
- (BOOL)resignFirstResponder;
- (void)touchesBegan:(NSSet*)touches withEvent:(UIEvent*)event;
- (void)touchesMoved:(NSSet*)touches withEvent:(UIEvent*)event;
- (void)touchesEnded:(NSSet*)touches withEvent:(UIEvent*)event;
@end

@interface UIView (Application)
@property(nonatomic, copy) UIColor* backgroundColor;
- (id)initWithFrame:(CGRect)frame;
- (void)addSubview:(UIView*)view;
- (void)removeFromSuperview;
- (BOOL)isDescendantOfView:(UIView*)view;
- (BOOL)pointInside:(CGPoint)point withEvent:(UIEvent*)event;
- (void)addGestureRecognizer:(UIGestureRecognizer*)recognizer;
// The text that a view of this kind shows; nil for none.
- (NSString*)shownText;
@end

// What a view draws itself, as accessibility is to see it.
@interface UIAccessibilityElement : UIResponder
- (id)initWithAccessibilityContainer:(id)container;
@end

@interface UIGestureRecognizer (Application)
- (id)initWithTarget:(id)target action:(SEL)action;
- (void)recognize;
@end

@interface UITapGestureRecognizer : UIGestureRecognizer
@end

@interface UIWindow (Application)
@property(nonatomic, retain) UIViewController* rootViewController;
- (void)makeKeyAndVisible;
- (void)sendEvent:(UIEvent*)event;
@end

@interface UIViewController (Application)
@property(nonatomic, retain) UIView* view;
@end

// --- controls

enum {
  UIControlEventTouchDown = 1 << 0,
  UIControlEventTouchUpInside = 1 << 6,
  UIControlEventValueChanged = 1 << 12,
  UIControlEventEditingChanged = 1 << 17
};

@interface UIControl (Application)
- (void)addTarget:(id)target action:(SEL)action forControlEvents:(NSUInteger)events;
@end

// What a keyboard types, kept in "text". What is selected is all or nothing.
@interface UIView (Typing)
- (void)type:(NSString*)text;
- (void)takeBack;
@end

@interface UIButton (Application)
- (void)setTitle:(NSString*)title forState:(NSUInteger)state;
@end

// The private view that shows a button's title.
@interface UIButtonLabel : UILabel
@end

@interface UISwitch (Application)
- (void)setOn:(BOOL)on animated:(BOOL)animated;
@end

@interface UISegmentedControl (Application)
- (id)initWithItems:(NSArray*)titles;
@end

@interface UIScrollView (Application)
@property(nonatomic) CGSize contentSize;
@end

@interface UITableViewCell (Application)
- (id)initWithStyle:(NSInteger)style reuseIdentifier:(NSString*)identifier;
@end

@class UITableView;

@protocol UITableViewDataSource
- (NSInteger)tableView:(UITableView*)table numberOfRowsInSection:(NSInteger)section;
- (UITableViewCell*)tableView:(UITableView*)table cellForRowAtIndexPath:(NSIndexPath*)path;
@end

@protocol UITableViewDelegate
- (void)tableView:(UITableView*)table didSelectRowAtIndexPath:(NSIndexPath*)path;
@end

// Asks for all rows at once, in one section; rows are 44 points high.
@interface UITableView : UIScrollView
@property(nonatomic, assign) id<UITableViewDataSource> dataSource;
@property(nonatomic, assign) id<UITableViewDelegate> delegate;
- (void)reloadData;
@end

@interface UINavigationBar : UIView
@end

typedef void (^UIScriptAnswer)(id result, NSError* error);

@protocol UIPageEngine
- (BOOL)isLoading;
// Calls the handler on the main thread: some time later, and for a UIWebView at once.
- (void)evaluate:(NSString*)script then:(UIScriptAnswer)handler;
- (void)tapAt:(CGPoint)point;
@end

// Pages that answer scripts when their engine does, and take taps. Without one they are empty.
@interface UIWebView : UIView {
  id _internal;
}
@property(nonatomic, assign) id<UIPageEngine> engine;
- (BOOL)isLoading;
@end

@interface WKWebView : UIView
@property(nonatomic, assign) id<UIPageEngine> engine;
@property(nonatomic, retain) NSURL* URL;
- (BOOL)isLoading;
- (void)evaluateJavaScript:(NSString*)script completionHandler:(UIScriptAnswer)handler;
@end

// Where taps in the page of a UIWebView land: the view under "_internal" and "browserView".
@interface UIWebBrowserView : UIView
// A text for a point, and what was given for one in its place.
- (NSArray*)tapLocations;
@end

@interface UIAlertView : UIView
// All that were shown, with their messages.
+ (NSArray*)shown;
- (NSString*)message;
@end

// --- the application

@protocol UIApplicationDelegate
- (BOOL)application:(UIApplication*)application
    didFinishLaunchingWithOptions:(NSDictionary*)options;
@end

@interface UIApplication (Application)
- (void)setKeyWindow:(UIWindow*)window;
- (void)addWindow:(UIWindow*)window;
- (NSArray*)openedURLs;
// The private mode stack.
- (void)pushRunLoopMode:(NSString*)mode;
- (void)pushRunLoopMode:(NSString*)mode requester:(id)requester;
- (void)popRunLoopMode:(NSString*)mode;
- (void)popRunLoopMode:(NSString*)mode requester:(id)requester;
@end

#ifdef __cplusplus
extern "C" {
#endif

// Makes the shared application without running it; null names UIApplication.
UIApplication* UIApplicationMake(NSString* className);
int UIApplicationMain(int argc, char** argv, NSString* className, NSString* delegateClassName);
// Runs the main run loop for the time.
void UIRunFor(NSTimeInterval seconds);
// A finger on the screen: a touch as the screen makes it, sent through the application.
void UIFingerTap(UIWindow* window, CGPoint point);
// Set by tests that look at no time: CFRunLoopRunInMode serves what is there and returns.
extern BOOL UIWaitsAreSkipped;

#ifdef __cplusplus
}
#endif
