// Labels, controls and what they show.
#import "tests/ios/uikit/State.h"

@implementation UILabel

- (id)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) [self setUserInteractionEnabled:NO];
  return self;
}

KEPT(NSString*, text, setText)

- (NSString*)shownText {
  return [self text];
}
- (NSString*)accessibilityLabel {
  return [self text];
}

@end

@implementation UIControl

- (id)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) keep(self, "actions", [NSMutableArray array]);
  return self;
}

- (void)addTarget:(id)target action:(SEL)action forControlEvents:(NSUInteger)events {
  NSValue* const held = [NSValue valueWithNonretainedObject:target];
  [kept(self, "actions") addObject:@{
    @"target" : held,
    @"action" : NSStringFromSelector(action),
    @"events" : @(events)
  }];
}

- (void)sendActionsForControlEvents:(NSUInteger)events {
  for (NSDictionary* action in [[kept(self, "actions") copy] autorelease]) {
    if (!([[action objectForKey:@"events"] unsignedIntegerValue] & events)) continue;
    [[[action objectForKey:@"target"] nonretainedObjectValue]
        performSelector:NSSelectorFromString([action objectForKey:@"action"])
             withObject:self];
  }
}

- (void)touchesBegan:(NSSet*)touches withEvent:(UIEvent*)event {
  [self sendActionsForControlEvents:UIControlEventTouchDown];
}

- (void)touchesMoved:(NSSet*)touches withEvent:(UIEvent*)event {
}

- (void)touchesEnded:(NSSet*)touches withEvent:(UIEvent*)event {
  if ([self pointInside:[[touches anyObject] locationInView:self] withEvent:event]) [self press];
}

- (void)press {
  [self sendActionsForControlEvents:UIControlEventTouchUpInside];
}

@end

@implementation UIView (Typing)

- (void)selectAll:(id)sender {
  keep(self, "selection", @(YES));
}

- (NSString*)withoutSelection {
  NSString* const text = kept(self, "selection") || !kept(self, "text") ? @"" : kept(self, "text");
  keep(self, "selection", nil);
  return text;
}

- (void)type:(NSString*)text {
  keep(self, "text", [[self withoutSelection] stringByAppendingString:text]);
}

- (void)takeBack {
  const BOOL isSelected = kept(self, "selection") != nil;
  NSString* const text = [self withoutSelection];
  const NSUInteger length = [text length];
  const BOOL isShorter = !isSelected && length > 0;
  keep(self, "text", isShorter ? [text substringToIndex:length - 1] : text);
}

@end

@implementation UIButtonLabel
@end

@implementation UIButton

- (id)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    UIButtonLabel* const label = [[UIButtonLabel alloc] initWithFrame:[self bounds]];
    keep(self, "titleLabel", label);
    [self addSubview:label];
    [label release];
  }
  return self;
}

- (NSString*)currentTitle {
  return [kept(self, "titleLabel") text];
}
- (NSString*)accessibilityLabel {
  return [self currentTitle];
}
- (void)setTitle:(NSString*)title forState:(NSUInteger)state {
  [kept(self, "titleLabel") setText:title];
}

@end

@implementation UITextField

- (BOOL)canBecomeFirstResponder {
  return YES;
}
KEPT(NSString*, placeholder, setPlaceholder)

- (BOOL)isSecureTextEntry {
  return [kept(self, "secureTextEntry") boolValue];
}
- (void)setSecureTextEntry:(BOOL)secure {
  keep(self, "secureTextEntry", @(secure));
}

- (NSString*)text {
  NSString* const typed = kept(self, "text");
  return typed ? typed : @"";
}

- (void)setText:(NSString*)text {
  keep(self, "text", text);
}

- (NSString*)shownText {
  return [[self text] length] > 0 ? [self text] : [self placeholder];
}

HELD(id<UITextFieldDelegate>, delegate, setDelegate)

- (void)insertText:(NSString*)text {
  [self type:text];
  [self sendActionsForControlEvents:UIControlEventEditingChanged];
}
- (void)deleteBackward {
  [self takeBack];
  [self sendActionsForControlEvents:UIControlEventEditingChanged];
}

- (void)press {
  [self becomeFirstResponder];
  [super press];
}

@end

@implementation UISwitch

- (BOOL)isOn {
  return [kept(self, "on") boolValue];
}
- (void)setOn:(BOOL)on {
  [self setOn:on animated:NO];
}
- (void)setOn:(BOOL)on animated:(BOOL)animated {
  keep(self, "on", @(on));
}

- (void)press {
  [self setOn:![self isOn] animated:YES];
  [self sendActionsForControlEvents:UIControlEventValueChanged];
  [super press];
}

@end

@implementation UISegmentedControl

- (id)initWithItems:(NSArray*)titles {
  if ((self = [super initWithFrame:NSMakeRect(0, 0, 0, 0)])) {
    keep(self, "titles", titles);
    [self setSelectedSegmentIndex:-1];
  }
  return self;
}

- (NSUInteger)numberOfSegments {
  return [kept(self, "titles") count];
}
- (NSInteger)selectedSegmentIndex {
  return [kept(self, "selected") integerValue];
}
- (void)setSelectedSegmentIndex:(NSInteger)index {
  keep(self, "selected", @(index));
}
- (NSString*)titleForSegmentAtIndex:(NSUInteger)index {
  return [kept(self, "titles") objectAtIndex:index];
}

@end
