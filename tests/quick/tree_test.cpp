// Which items are views, in which order, where, and which of them a finger meets.

#include "backends/qt/program/Stillness.h"
#include "tests/quick/QuickScreen.h"

namespace tarni::test {
namespace {

using testing::Contains;
using testing::Not;
using Names = std::vector<std::string>;

class Tree : public QuickScreen {};
class HitTest : public QuickScreen {};

TEST_F(Tree, SubviewsStandInPaintOrder) {
  show(R"(Item { objectName: "all"
    Rectangle { objectName: "front"; z: 2 }
    Rectangle { objectName: "first" }
    Rectangle { objectName: "back"; z: -1 }
    Item { objectName: "nothing but room"; width: 100; height: 100 }
    Rectangle { objectName: "second" }
    Rectangle { id: idOnly } })");
  EXPECT_EQ(namesIn(view("all")), (Names{"back", "first", "second", "idOnly", "front"}));
  const auto* const before = view("all")->subviews().data();
  EXPECT_EQ(view("all")->subviews().data(), before);
  object("back")->setZ(3);
  EXPECT_EQ(namesIn(view("all")), (Names{"first", "second", "idOnly", "front", "back"}));
}

TEST_F(Tree, AControlIsOneViewButWhatTheProgramPutsIntoItIsSeen) {
  show(R"(Column { objectName: "all"
    Button { objectName: "plain"; text: "A" }
    Button { objectName: "own"; contentItem: Row { Text { objectName: "inside"; text: "B" } } }
    TextField { objectName: "field"; placeholderText: "Name" }
    ComboBox { objectName: "fixed"; model: ["a", "b"] }
    ComboBox { objectName: "editable"; editable: true; model: ["a", "b"] } })");
  for (const char* const name : {"plain", "field", "fixed"}) {
    EXPECT_EQ(namesIn(view(name)), Names()) << name;
  }
  ASSERT_EQ(view("own")->subviews().size(), 1U);
  EXPECT_EQ(namesIn(view("own")->subviews().front()), Names{"inside"});
  EXPECT_THAT(namesIn(view("editable")), testing::UnorderedElementsAre("UIButton", "UITextField"));
}

TEST_F(Tree, FramesAreUprightRectanglesWhateverTheTransform) {
  show(R"(Item { objectName: "page"; x: 100; y: 100
    Rectangle { objectName: "turned"; width: 40; height: 20; rotation: 90 }
    Rectangle { objectName: "doubled"; x: 100; width: 40; height: 20; scale: 2 } })");
  EXPECT_EQ(view("turned")->frame(), (CGRect{{10, -10}, {20, 40}}));
  EXPECT_EQ(view("turned")->bounds(), (CGRect{{0, 0}, {40, 20}}));
  EXPECT_EQ(view("doubled")->frame(), (CGRect{{80, -10}, {80, 40}}));
  EXPECT_EQ(met(120, 129), "turned");
  EXPECT_EQ(met(182, 91), "doubled");
}

TEST_F(Tree, AViewWhoseItemHasGoneIsEmptyHiddenAndNowhere) {
  show(R"(Button { objectName: "gone"; text: "x"; width: 50; height: 50 })");
  const UIViewRef gone = view("gone");
  const std::weak_ptr<platform::UIView> registered = gone;
  gone->layer().setValueForKey("guid", "tag");
  gone->layer().setBorderWidth(4);
  delete object("gone");
  EXPECT_TRUE(gone->isHidden());
  EXPECT_EQ(gone->superview(), nullptr);
  EXPECT_EQ(gone->window(), nullptr);
  EXPECT_TRUE(gone->subviews().empty());
  EXPECT_EQ(gone->frame(), CGRect{});
  EXPECT_EQ(gone->hitTest({0, 0}), nullptr);
  EXPECT_EQ(gone->accessibilityLabel(), std::nullopt);
  EXPECT_EQ(as<platform::UIButton>(gone)->currentTitle(), std::nullopt);
  EXPECT_EQ(*gone->layer().valueForKey("tag"), "guid");
  EXPECT_TRUE(gone->gestureRecognizers().empty());
  finish(gone->becomeFirstResponder());
}

TEST_F(HitTest, MeetsTheSameInASceneThatIsHeldStill) {
  show(R"(Rectangle { objectName: "page"; anchors.fill: parent; color: "white"
    Rectangle { objectName: "turned"; x: 60; y: 40; width: 80; height: 30; rotation: 30; color: "red" }
    Item { x: 200; y: 20
      Rectangle { objectName: "outside"; x: 30; y: 10; width: 50; height: 50; color: "blue" } }
    Item { x: 20; y: 150; width: 40; height: 40; clip: true
      Rectangle { objectName: "clipped"; width: 100; height: 100; color: "green" } }
    Rectangle { objectName: "large"; x: 200; y: 150; width: 80; height: 80; color: "gray"
      Rectangle { objectName: "behind"; z: -1; x: -20; width: 60; height: 40; color: "black" } }
    Rectangle { objectName: "unseen"; opacity: 0; x: 300; width: 50; height: 50; color: "red" }
    Flickable { x: 300; y: 100; width: 60; height: 60; contentHeight: 200; contentY: 50
      Rectangle { objectName: "row"; y: 60; width: 60; height: 30; color: "red" } }
    ListView { objectName: "list"; x: 100; y: 240; width: 80; height: 50; model: 10
      delegate: Rectangle { width: 80; height: 8; color: index % 2 ? "red" : "blue" } } })");
  const auto metEverywhere = [this] {
    Names all;
    for (int y = 0; y < 300; y += 6) {
      for (int x = 0; x < 400; x += 6) all.push_back(met(x, y));
    }
    return all;
  };
  const Names before = metEverywhere();
  for (const char* const name : {"turned", "outside", "clipped", "behind", "row"}) {
    EXPECT_THAT(before, Contains(name));
  }
  const auto held = qt::stillness();
  EXPECT_EQ(metEverywhere(), before);
  object("outside")->setX(80);
  EXPECT_EQ(met(300, 50), "page") << "what was worked out is used";
  QCoreApplication::processEvents();
  EXPECT_EQ(met(300, 50), "outside") << "the program has run";
}

TEST_F(HitTest, AMouseAreaIsToItsParentWhatARecognizerIs) {
  show(R"(
    Rectangle { objectName: "card"; width: 100; height: 60
      MouseArea { objectName: "area"; anchors.fill: parent } }
    Rectangle { objectName: "tapped"; y: 70; width: 100; height: 60
      TapHandler {} }
    Rectangle { objectName: "still"; y: 140; width: 100; height: 60 }
    MouseArea { objectName: "filled"; y: 210; width: 100; height: 60
      Text { text: "In it" } })");
  EXPECT_EQ(namesIn(view("card")), Names());
  const auto taps = [&](const char* name) {
    const auto recognizers = view(name)->gestureRecognizers();
    return recognizers.size() == 1 && recognizers.front() == uikit::UITapGestureRecognizer;
  };
  EXPECT_TRUE(taps("card"));
  EXPECT_TRUE(taps("tapped"));
  EXPECT_FALSE(taps("still"));
  EXPECT_TRUE(taps("filled"));
  object("area")->setEnabled(false);
  EXPECT_FALSE(taps("card"));
}

TEST_F(HitTest, OnlyAModalPopupKeepsFingersFromThePage) {
  show(R"(Button { objectName: "below"; width: 100; height: 60 }
    Popup { objectName: "popup"; x: 200; y: 100; width: 100; height: 100
      Button { objectName: "inPopup"; text: "P" } })");
  QObject* const popup = object<QObject>("popup");
  QMetaObject::invokeMethod(popup, "open");
  ASSERT_TRUE(runUntil([&] { return popup->property("opened").toBool(); }));
  EXPECT_EQ(metInMiddle("below"), "below");
  EXPECT_EQ(metInMiddle("inPopup"), "inPopup");
  QMetaObject::invokeMethod(popup, "close");
  ASSERT_TRUE(runUntil([&] { return !popup->property("visible").toBool(); }));
  popup->setProperty("modal", true);
  QMetaObject::invokeMethod(popup, "open");
  ASSERT_TRUE(runUntil([&] { return popup->property("opened").toBool(); }));
  EXPECT_EQ(metInMiddle("inPopup"), "inPopup");
  const CGPoint onButton = view("below")->convertPointToWindow({50, 30});
  const UIViewRef outside = root()->hitTest(onButton);
  ASSERT_TRUE(as<platform::UIButton>(outside));
  EXPECT_EQ(as<platform::UIButton>(outside)->currentTitle(), "dismiss popup");
  finish(KIFAdditions::tap(outside));
  EXPECT_TRUE(runUntil([&] { return !popup->property("visible").toBool(); }));
}

TEST_F(HitTest, WhatIsClippedAwayIsNowhere) {
  show(R"(Item { x: 10; width: 50; height: 50; clip: true
    Rectangle { objectName: "wide"; x: -20; width: 200; height: 50; color: "red"
      Rectangle { objectName: "in"; x: 30; y: 10; width: 100; height: 10 } } }
    Flickable { y: 100; width: 50; height: 50; contentHeight: 500
      Button { objectName: "below"; y: 60; width: 50; height: 30 } })");
  EXPECT_EQ(met(35, 40), "wide");
  EXPECT_NE(met(100, 25), "wide");
  EXPECT_EQ(view("wide")->bounds(), (CGRect{{0, 0}, {50, 50}})) << "what is seen of it";
  EXPECT_EQ(view("wide")->convertPointToWindow({0, 0}), (CGPoint{10, 0}));
  EXPECT_EQ(view("wide")->convertPointFromWindow({10, 0}), CGPoint());
  EXPECT_EQ(view("wide")->center(), (CGPoint{25, 25}));
  EXPECT_EQ(view("in")->frame(), (CGRect{{10, 10}, {40, 10}}));
  EXPECT_TRUE(std::isnan(view("below")->center().x));
  EXPECT_EQ(view("below")->bounds(), CGRect{});
}

}  // namespace
}  // namespace tarni::test
