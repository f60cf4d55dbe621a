// What scrolls: scroll views, tables with their rows, text views; and bars.
#import "tests/ios/uikit/State.h"

static const CGFloat kRowHeight = 44;
static const CGFloat kDragThreshold = 10;

static CGFloat within(CGFloat value, CGFloat most) {
  return value < 0 || most < 0 ? 0 : value > most ? most : value;
}

@implementation UIScrollView

- (id)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) [self setClipsToBounds:YES];
  return self;
}

- (CGSize)contentSize {
  return [kept(self, "contentSize") sizeValue];
}
- (void)setContentSize:(CGSize)size {
  keep(self, "contentSize", [NSValue valueWithSize:size]);
}
- (CGPoint)contentOffset {
  return [self bounds].origin;
}
- (void)setContentOffset:(CGPoint)offset {
  [self setContentOffset:offset animated:NO];
}
- (void)setContentOffset:(CGPoint)offset animated:(BOOL)animated {
  CGRect bounds = [self bounds];
  bounds.origin = offset;
  [self setBounds:bounds];
}

- (void)touchesBegan:(NSSet*)touches withEvent:(UIEvent*)event {
  keep(self, "start", [NSValue valueWithPoint:[[touches anyObject] locationInView:nil]]);
  keep(self, "offset", [NSValue valueWithPoint:[self contentOffset]]);
  keep(self, "dragged", nil);
}

- (void)touchesMoved:(NSSet*)touches withEvent:(UIEvent*)event {
  const CGPoint start = [kept(self, "start") pointValue];
  const CGPoint offset = [kept(self, "offset") pointValue];
  const CGPoint now = [[touches anyObject] locationInView:nil];
  const CGFloat dx = now.x - start.x, dy = now.y - start.y;
  if (!kept(self, "dragged") && dx * dx + dy * dy < kDragThreshold * kDragThreshold) return;
  keep(self, "dragged", @1);
  const CGSize content = [self contentSize], size = [self bounds].size;
  [self setContentOffset:NSMakePoint(within(offset.x - dx, content.width - size.width),
                                     within(offset.y - dy, content.height - size.height))];
}

- (void)touchesEnded:(NSSet*)touches withEvent:(UIEvent*)event {
}

- (BOOL)wasDragged {
  return kept(self, "dragged") != nil;
}

@end

@implementation UITextView

KEPT(NSString*, text, setText)
- (BOOL)canBecomeFirstResponder {
  return YES;
}
- (void)insertText:(NSString*)text {
  [self type:text];
}
- (void)deleteBackward {
  [self takeBack];
}

@end

@implementation UITableViewCell

- (BOOL)isSelected {
  return [kept(self, "selected") boolValue];
}
- (void)setSelected:(BOOL)selected {
  keep(self, "selected", @(selected));
}

- (id)initWithStyle:(NSInteger)style reuseIdentifier:(NSString*)identifier {
  if ((self = [super initWithFrame:NSMakeRect(0, 0, 320, kRowHeight)])) {
    UILabel* const label = [[UILabel alloc] initWithFrame:NSMakeRect(15, 0, 290, kRowHeight)];
    keep(self, "textLabel", label);
    [self addSubview:label];
    [label release];
  }
  return self;
}

- (UILabel*)textLabel {
  return kept(self, "textLabel");
}
- (NSString*)text {
  return [[self textLabel] text];
}

@end

@implementation UITableView

- (id<UITableViewDataSource>)dataSource {
  return [kept(self, "dataSource") nonretainedObjectValue];
}

- (void)setDataSource:(id<UITableViewDataSource>)source {
  keep(self, "dataSource", [NSValue valueWithNonretainedObject:source]);
  [self reloadData];
}

HELD(id<UITableViewDelegate>, delegate, setDelegate)

static NSIndexPath* pathOf(NSInteger row) {
  NSUInteger indexes[] = {0, (NSUInteger)row};
  return [NSIndexPath indexPathWithIndexes:indexes length:2];
}

- (void)reloadData {
  for (UIView* view in [self subviews]) [view removeFromSuperview];
  const NSInteger rows = [[self dataSource] tableView:self numberOfRowsInSection:0];
  for (NSInteger row = 0; row < rows; ++row) {
    UITableViewCell* const cell = [[self dataSource] tableView:self
                                         cellForRowAtIndexPath:pathOf(row)];
    [cell setFrame:NSMakeRect(0, row * kRowHeight, [self bounds].size.width, kRowHeight)];
    [self addSubview:cell];
  }
  [self setContentSize:NSMakeSize([self bounds].size.width, rows * kRowHeight)];
}

- (void)touchesEnded:(NSSet*)touches withEvent:(UIEvent*)event {
  [super touchesEnded:touches withEvent:event];
  const NSInteger row = (NSInteger)([[touches anyObject] locationInView:self].y / kRowHeight);
  const NSInteger rows = [[self dataSource] tableView:self numberOfRowsInSection:0];
  if ([self wasDragged] || row < 0 || row >= rows) return;
  [[self delegate] tableView:self didSelectRowAtIndexPath:pathOf(row)];
}

@end

@implementation UINavigationBar
@end
