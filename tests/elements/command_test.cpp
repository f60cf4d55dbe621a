// The executor and the commands that act on elements and ask about them.
#include "agent/elements/UIView_Highlight.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/ScrollView.h"
#include "backends/headless/views/Switch.h"
#include "backends/headless/views/TableView.h"
#include "backends/headless/views/WebView.h"
#include "platform/Foundation/NSException.h"
#include "tests/elements/CommandScreen.h"

namespace tarni::test {
namespace {

using headless::Button;
using headless::Label;
using headless::ScrollView;
using headless::Switch;
using headless::View;
using platform::CGPoint;
using platform::UIViewRef;

class Command : public CommandScreen {
 protected:
  static Json ask(const UIViewRef& view, const char* name) {
    return commandOn(view, {{"functionname", name}});
  }
  static Json outputs(std::initializer_list<const char*> values) {
    Json entries = Json::array();
    for (const char* value : values) entries.push_back({{"output", value}});
    return entries;
  }
  const Json none = Json::array();
};

TEST_F(Command, ClickelementTapsAndGivesTheBorderBack) {
  int taps = 0;
  const auto button = add<Button>("Go").get();
  button->onTap([&] { taps += Highlight::isHighlighted(button); });
  Highlight::deHighlightView(button, 2.0, std::nullopt);
  const int flushes = environment.transaction().flushes();
  EXPECT_EQ(ask(button, "clickelement"), none);
  EXPECT_EQ(taps, 1) << "under the highlight";
  EXPECT_EQ(button->layer().borderWidth(), 2.0);
  EXPECT_EQ(environment.transaction().flushes(), flushes + 2);
  const auto& run = environment.application().runLoopRuns().back();
  EXPECT_EQ(run.mode, platform::kCFRunLoopDefaultMode);
  EXPECT_EQ(run.seconds, 0.5);
  EXPECT_FALSE(run.returnAfterSourceHandled);
}

TEST_F(Command, OnAViewThatMovedToAnotherWindowActsThere) {
  int taps = 0;
  const auto button = add<Button>("Go").get();
  button->onTap([&taps] { ++taps; });
  UIViewMemoryCache::sharedInstance().addViewInMemoryCache(button, "moved");
  const headless::WindowRef other = environment.makeWindow();
  other->addSubview(button);
  EXPECT_EQ(command({{"functionname", "clickelement"}, {"accessorvalue", "moved"}}), none);
  EXPECT_EQ(taps, 1);
  EXPECT_EQ(environment.application().eventLog().events().back().touches.at(0).window.lock(),
            other);
  button->removeFromSuperview();
  EXPECT_EQ(command({{"functionname", "clickelement"}, {"accessorvalue", "moved"}}), none);
  EXPECT_EQ(command({{"functionname", "swipeon"}, {"accessorvalue", "moved"}}), none);
  EXPECT_EQ(taps, 1) << "it stands in no window";
  environment.application().removeWindow(other);
}

TEST_F(Command, SwipetoScrollsOnceForEachTestThatAViewPasses) {
  const auto scroll = add<ScrollView>().get();
  const auto table = add<headless::TableView>().get();
  const auto named = add<headless::TableView>().className("MyScrollViewTable").get();
  const auto plain = add<View>().className("ScrollViewOfNoKind").get();
  scroll->scrollTo({30, 50});
  EXPECT_EQ(command({{"functionname", "swipeto"}}), none);
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{0, 250}));
  EXPECT_TRUE(scroll->wasAnimated());
  EXPECT_EQ(table->contentOffset(), (CGPoint{0, 200}));
  EXPECT_EQ(named->contentOffset(), (CGPoint{0, 400}));

  scroll->scrollTo({30, 50});
  EXPECT_EQ(command({{"functionname", "swipereset"}}), none);
  EXPECT_EQ(scroll->contentOffset(), (CGPoint{0, 0}));
  EXPECT_EQ(named->contentOffset(), (CGPoint{0, 0}));
  EXPECT_EQ(plain->bounds().origin, (CGPoint{0, 0}));
}

TEST_F(Command, SwipeonDragsOverTheMiddleHalf) {
  struct Case {
    const char* direction;
    CGPoint from, to;
  };
  const auto target = add<View>().frame({{100, 200}, {80, 40}}).get();
  for (const Case& expected :
       {Case{"Left", {160, 220}, {120, 220}}, Case{"right", {120, 220}, {160, 220}},
        Case{"UP", {140, 230}, {140, 210}}, Case{"down", {140, 210}, {140, 230}},
        Case{"sideways", {100, 200}, {100, 200}}}) {
    environment.application().eventLog().clear();
    EXPECT_EQ(commandOn(target, {{"functionname", "swipeon"}, {"datavalue", expected.direction}}),
              none);
    const auto& events = environment.application().eventLog().events();
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.front().touches.at(0).locationInWindow, expected.from) << expected.direction;
    EXPECT_EQ(events.back().touches.at(0).locationInWindow, expected.to) << expected.direction;
  }
}

TEST_F(Command, StatesAreReadByKindByNameAndByFrame) {
  EXPECT_EQ(ask(add<Switch>(true).className("Toggle").get(), "isselected"), outputs({"true"}));
  EXPECT_EQ(ask(add<View>().className("SwitchByName").get(), "isselected"), outputs({"false"}));
  const auto label = add<Label>("a").get();
  label->setUserInteractionEnabled(false);
  EXPECT_EQ(ask(label, "isenabled"), outputs({"false"}));
  EXPECT_EQ(ask(add<View>().frame({{0, 0}, {390, 844}}).get(), "isdisplayed"), outputs({"true"}));
  EXPECT_EQ(ask(add<View>().frame({{1, 0}, {390, 844}}).get(), "isdisplayed"), outputs({"false"}));
  const auto far = add<View>().frame({{5000, 5000}, {100, 100}}).get();
  const auto child = headless::build<View>().frame({{0, 0}, {10, 10}}).in(*far);
  EXPECT_EQ(ask(child, "isdisplayed"), outputs({"true"})) << "its own frame is compared";
}

TEST_F(Command, InAPageThatRaisesIsAnsweredWithTheReasonButAClickGoesOnAndShowsIt) {
  const auto page = add<headless::WebView>().get();
  GlobalVars::sharedInstance().set_currentWebView(page);
  page->setEngine([](const std::string&) -> std::string {
    throw platform::NSException("JSException", "the page is gone");
  });
  const Json reason = Json::array({{{"exceptionmsg", "the page is gone"}}});
  for (const char* name :
       {"findelements", "findelementsinsideelement", "sendkeysonelement", "gettext"}) {
    EXPECT_EQ(command({{"functionname", name}}), reason) << name;
  }
  EXPECT_EQ(command({{"functionname", "clickelement"}, {"accessorvalue", "7"}}), Json::array());
  drainMainQueue();
  ASSERT_EQ(environment.alerts().shown().size(), 1U);
  EXPECT_EQ(environment.alerts().shown()[0]->message, "the page is gone");
}

class Highlighted : public CommandScreen {
 protected:
  Highlight::Border border() const {
    return {label->layer().borderWidth(), label->layer().borderColor()};
  }

  const std::shared_ptr<Label> label = add<Label>("one").get();
  const Highlight::Border green{4.0, platform::CGColor{0, 1, 0, 1}};
  const Highlight::Border red{2.0, platform::CGColor{1, 0, 0, 1}};
};

TEST_F(Highlighted, TwiceLeavesNoGreenBehind) {
  Highlight::deHighlightView(label, red.width, red.color);
  Highlight::highlightView(label);
  time.pass(0.5);
  EXPECT_EQ(Highlight::ownBorder(label), red);
  Highlight::highlightView(label);
  time.pass(0.6);
  EXPECT_EQ(border(), green) << "the second one lasts a second of its own";
  time.pass(0.5);
  EXPECT_EQ(border(), red);
}

TEST_F(Highlighted, AndTakenOffKeepsTheBorderThatItGetsLater) {
  Highlight::highlightView(label);
  Highlight::deHighlightView(label);
  EXPECT_EQ(border(), Highlight::Border{});
  Highlight::deHighlightView(label, red.width, red.color);
  time.pass(1.1);
  EXPECT_EQ(border(), red);
}

}  // namespace
}  // namespace tarni::test
