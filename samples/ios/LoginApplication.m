// The login screen as an application of UIKit's: the same content as the other samples. It knows
// nothing of the agent. Compiled without ARC, for iOS as well as for the double of UIKit that tests
// run it on.
#import <UIKit/UIKit.h>

static const CGFloat kLeft = 20;
static const CGFloat kWidth = 350;
static const NSInteger kRowCount = 20;

@interface LoginDelegate
    : NSObject <UIApplicationDelegate, UITableViewDataSource, UITableViewDelegate> {
  UIView* page_;
  UILabel* welcome_;
  UILabel* status_;
  UITextField* username_;
  UIView* question_;
}
@end

@implementation LoginDelegate

- (id)add:(Class)kind at:(CGFloat)top height:(CGFloat)height to:(UIView*)parent {
  UIView* const view = [[kind alloc] initWithFrame:CGRectMake(kLeft, top, kWidth, height)];
  [parent addSubview:view];
  return [view autorelease];
}

- (UILabel*)label:(NSString*)text at:(CGFloat)top to:(UIView*)parent {
  UILabel* const label = [self add:[UILabel class] at:top height:31 to:parent];
  [label setText:text];
  return label;
}

- (UIButton*)button:(NSString*)title at:(CGFloat)top to:(UIView*)parent does:(SEL)action {
  UIButton* const button = [self add:[UIButton class] at:top height:44 to:parent];
  [button setTitle:title forState:0];
  [button setBackgroundColor:[UIColor colorWithRed:0.1 green:0.4 blue:0.8 alpha:1]];
  [button addTarget:self action:action forControlEvents:UIControlEventTouchUpInside];
  return button;
}

- (BOOL)application:(UIApplication*)application
    didFinishLaunchingWithOptions:(NSDictionary*)options {
  const CGRect screen = [[UIScreen mainScreen] bounds];
  page_ = [[UIView alloc] initWithFrame:screen];
  [page_ setBackgroundColor:[UIColor whiteColor]];
  UINavigationBar* const bar = [self add:[UINavigationBar class] at:44 height:44 to:page_];
  UIColor* const grey = [UIColor colorWithRed:0.9 green:0.9 blue:0.9 alpha:1];
  [bar setBackgroundColor:grey];
  [self label:@"Tarni Sample" at:6 to:bar];
  welcome_ = [self label:@"Welcome" at:104 to:page_];
  username_ = [self add:[UITextField class] at:156 height:44 to:page_];
  [username_ setPlaceholder:@"User name"];
  [username_ setBackgroundColor:grey];
  UITextField* const password = [self add:[UITextField class] at:208 height:44 to:page_];
  [password setPlaceholder:@"Password"];
  [password setSecureTextEntry:YES];
  [password setBackgroundColor:grey];
  [self label:@"Remember me" at:260 to:page_];
  UISwitch* const remember =
      [[UISwitch alloc] initWithFrame:CGRectMake(kLeft + kWidth - 51, 260, 51, 31)];
  [page_ addSubview:[remember autorelease]];
  UITableView* const list = [self add:[UITableView class] at:307 height:308 to:page_];
  [list setDataSource:self];
  [list setDelegate:self];
  [self button:@"Log in" at:631 to:page_ does:@selector(logIn)];
  [self button:@"Details…" at:687 to:page_ does:@selector(ask)];
  status_ = [self label:@"" at:743 to:page_];

  UIViewController* const controller = [[[UIViewController alloc] init] autorelease];
  [controller setView:page_];
  UIWindow* const window = [[UIWindow alloc] initWithFrame:screen];
  [window setRootViewController:controller];
  [window makeKeyAndVisible];
  return YES;
}

- (void)logIn {
  [welcome_ setText:[@"Hello, " stringByAppendingString:[username_ text]]];
}

- (void)ask {
  question_ = [[[UIView alloc] initWithFrame:CGRectMake(0, 200, 390, 200)] autorelease];
  [question_ setBackgroundColor:[UIColor whiteColor]];
  [self label:@"Really?" at:20 to:question_];
  [self button:@"OK" at:70 to:question_ does:@selector(accept)];
  [self button:@"Cancel" at:130 to:question_ does:@selector(reject)];
  [page_ addSubview:question_];
}

- (void)answer:(NSString*)text {
  [question_ removeFromSuperview];
  [status_ setText:text];
}

- (void)accept {
  [self answer:@"Accepted"];
}

- (void)reject {
  [self answer:@"Rejected"];
}

- (NSInteger)tableView:(UITableView*)table numberOfRowsInSection:(NSInteger)section {
  return kRowCount;
}

- (UITableViewCell*)tableView:(UITableView*)table cellForRowAtIndexPath:(NSIndexPath*)path {
  UITableViewCell* const cell = [[UITableViewCell alloc] initWithStyle:0 reuseIdentifier:nil];
  [[cell textLabel]
      setText:[NSString stringWithFormat:@"Row %lu", (unsigned long)[path indexAtPosition:1] + 1]];
  return [cell autorelease];
}

- (void)tableView:(UITableView*)table didSelectRowAtIndexPath:(NSIndexPath*)path {
  [status_
      setText:[NSString stringWithFormat:@"Row %lu", (unsigned long)[path indexAtPosition:1] + 1]];
}

@end

int main(int argc, char** argv) {
  @autoreleasepool {
    return UIApplicationMain(argc, argv, nil, @"LoginDelegate");
  }
}
