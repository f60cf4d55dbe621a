// What the backend takes from UIKit and Foundation beside views and touches.
#include <nlohmann/json.hpp>

#include "agent/WebView/WebView.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/elements/UIView_Highlight.h"
#include "agent/elements/Utilities.h"
#include "platform/UIKit/UIControls.h"
#include "tests/ios/Await.h"
#include "tests/ios/OnIos.h"

@interface Observer : NSObject {
 @public
  id sender;
  int edits;
}
@end

@implementation Observer

- (void)edited:(id)field {
  ++edits;
}

- (void)changed:(NSNotification*)notification {
  sender = [notification object];
}

@end

@interface OwnCell : UITableViewCell
@end

@implementation OwnCell

- (NSString*)text {
  return @"own";
}

@end

// A page whose process may end.
@interface MortalPage : NSObject <UIPageEngine> {
 @public
  BOOL isGone_;
}
@end

@implementation MortalPage

- (BOOL)isLoading {
  return NO;
}

- (void)evaluate:(NSString*)script then:(UIScriptAnswer)handler {
  if (isGone_) {
    handler(nil, [NSError errorWithDomain:@"WKErrorDomain" code:2 userInfo:nil]);
  } else {
    handler(@"its answer", nil);
  }
}

- (void)tapAt:(CGPoint)point {
}

@end

namespace tarni::test {
namespace {

class Services : public OnIos {};

TEST_F(Services, TypedTextReachesTargetsAndObserversOfTheField) {
  UITextField* const field = add<UITextField>([UITextField class], NSMakeRect(10, 10, 100, 30));
  Observer* const observer = [[[Observer alloc] init] autorelease];
  [[NSNotificationCenter defaultCenter] addObserver:observer
                                           selector:@selector(changed:)
                                               name:@"UITextFieldTextDidChangeNotification"
                                             object:field];
  [field addTarget:observer
                action:@selector(edited:)
      forControlEvents:UIControlEventEditingChanged];
  const auto found =
      nlohmann::json::parse(answer(R"({"functionname":"findelements","tagname":"UITextField"})"
                                   "\r\n"));
  const nlohmann::json typing = {{"functionname", "sendkeysonelement"},
                                 {"accessorvalue", found[0]["elementID"]},
                                 {"datavalue", "Ada \xc3\xa9"}};
  EXPECT_EQ(answer(typing.dump() + "\r\n"), "[]");
  EXPECT_STREQ([[field text] UTF8String], "Ada \xc3\xa9");
  EXPECT_EQ(observer->sender, field);
  EXPECT_EQ(observer->edits, 1);
  [[NSNotificationCenter defaultCenter] removeObserver:observer];
}

TEST_F(Services, APageThatGoesFailsOneCommandAndIsLeftAloneUntilItsViewLoadsAnother) {
  MortalPage* const page = [[[MortalPage alloc] init] autorelease];
  WKWebView* const view = add<WKWebView>([WKWebView class], NSMakeRect(0, 0, 300, 300));
  [view setEngine:page];
  GlobalVars::sharedInstance().set_currentWebView(ref(view));
  const auto find = [] { return answer(R"({"functionname":"findelements","tagname":"FORM"})"); };
  EXPECT_EQ(find(), "its answer");
  page->isGone_ = YES;
  EXPECT_EQ(find(), R"([{"exceptionmsg":"the page is gone"}])");
  EXPECT_EQ(find(), "[]");
  tarni::WebView().performRecorderAndPlaybackInjection();
  bool hasPassed = false;
  platform::current().dispatch->mainQueue().async([&hasPassed] { hasPassed = true; });
  while (!hasPassed) UIRunFor(0.01);
  EXPECT_TRUE(log_.linesWith("*****WEBVIEW IS LOADING").empty());
  page->isGone_ = NO;
  EXPECT_EQ(find(), "[]");
  [view setURL:[NSURL URLWithString:@"about:blank"]];
  EXPECT_EQ(find(), "its answer");
  GlobalVars::sharedInstance().set_currentWebView(nullptr);
}

TEST_F(Services, ACellsTextIsItsOwnOrElseItsLabels) {
  UITableViewCell* const cell = [[[OwnCell alloc] initWithStyle:0 reuseIdentifier:nil] autorelease];
  [[cell textLabel] setText:@"label"];
  EXPECT_EQ(Utilities::getUIViewText(ref(cell)), "own");
  ForgetMethod(@"UITableViewCell", @selector(text));
  EXPECT_EQ(Utilities::getUIViewText(ref(cell)), "label");
}

TEST_F(Services, ABorderComesBackAsItWasWhateverItsColour) {
  CALayer* const layer = [addView([UIView class], NSMakeRect(0, 0, 100, 50)) layer];
  const platform::UIViewRef view = ref([[window_ subviews] lastObject]);
  UIColor* const colors[] = {[UIColor colorWithPatternImage:nil], [UIColor blackColor], nil};
  for (UIColor* color : colors) {
    [layer setBorderColor:[color CGColor]];
    Highlight::highlightView(view);
    EXPECT_TRUE(Highlight::isHighlighted(view));
    Highlight::highlightView(view);
    Highlight::deHighlightView(view);
    EXPECT_EQ([layer borderColor], [color CGColor]);
  }
}

TEST_F(Services, PicturesAreCutAndEncoded) {
  UIView* const view = addView([UIView class], NSMakeRect(0, 0, 100, 50));
  [view setBackgroundColor:[UIColor colorWithRed:1 green:0 blue:0 alpha:1]];
  const platform::UIImageRef image = awaitImage(ref(view)->drawViewHierarchy());
  ASSERT_TRUE(image);
  EXPECT_EQ(image->size(), (platform::CGSize{100, 50}));
  EXPECT_EQ(image->scale(), 2);
  const platform::UIImageRef cut = image->crop({{-100, -100}, {300, 200}});
  ASSERT_TRUE(cut);
  EXPECT_EQ(cut->size(), (platform::CGSize{300, 200}));
  EXPECT_GT(cut->JPEGRepresentation(0.6).size(), 500U);
  UIView* const empty = addView([UIView class], NSMakeRect(0, 0, 0, 50));
  EXPECT_FALSE(awaitImage(ref(empty)->drawViewHierarchy()));
}

TEST_F(Services, AddressesAreReadAndOpened) {
  NSString* const path = [NSTemporaryDirectory() stringByAppendingPathComponent:@"tarni-ios.js"];
  [@"script" writeToFile:path atomically:NO encoding:NSUTF8StringEncoding error:NULL];
  platform::NSURLLoader& loader = *platform::current().urlLoader;
  EXPECT_EQ(await(loader.stringWithContentsOfURL("file://" + std::string([path UTF8String]))),
            "script");
  EXPECT_EQ(await(loader.stringWithContentsOfURL("file:///nowhere/at/all")), std::nullopt);
  EXPECT_EQ(await(loader.stringWithContentsOfURL("no address at all")), std::nullopt);
  [[NSFileManager defaultManager] removeItemAtPath:path error:NULL];

  EXPECT_TRUE(platform::current().application->openURL("tel:1"));
  EXPECT_FALSE(platform::current().application->openURL("nothing"));
  EXPECT_EQ([[application_ openedURLs] count], 1U);
}

}  // namespace
}  // namespace tarni::test
