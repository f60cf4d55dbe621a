// The tree of views: identity, order, geometry, hit tests, and what is left of a view without
// widget.
#include <QtCore/QTimer>
#include <QtWidgets/QDialog>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <memory>

#include "backends/qt/program/OwnWidgets.h"
#include "backends/qt/views/QtViewBase.h"
#include "tests/qt/Support.h"

namespace tarni::test {
namespace {

TEST(Identity, AViewWhoseWidgetHasGoneIsEmptyHiddenAndNowhere) {
  QWidget window;
  auto button = std::make_unique<QPushButton>("Gone", &window);
  const UIViewRef view = viewOf(*button);
  EXPECT_EQ(viewOf(*button), view) << "always the same";
  EXPECT_EQ(qt::widgetOfView(view), button.get());
  EXPECT_EQ(view->superview(), viewOf(window));
  view->layer().setValueForKey("guid", "tag");
  show(window);
  EXPECT_EQ(qt::viewOfWindow(window.windowHandle()), viewOf(window));
  EXPECT_EQ(view->hitTest({1, 1}), view);
  button->hide();
  EXPECT_EQ(view->hitTest({1, 1}), nullptr);
  button.reset();
  EXPECT_EQ(qt::widgetOfView(view), nullptr);
  EXPECT_TRUE(view->isHidden());
  EXPECT_EQ(view->superview(), nullptr);
  EXPECT_EQ(view->window(), nullptr);
  EXPECT_TRUE(view->subviews().empty());
  EXPECT_EQ(view->frame(), CGRect{});
  EXPECT_EQ(view->bounds(), CGRect{});
  EXPECT_EQ(view->hitTest({0, 0}), nullptr);
  EXPECT_FALSE(view->isUserInteractionEnabled());
  EXPECT_EQ(view->accessibilityLabel(), std::nullopt);
  EXPECT_EQ(as<platform::UIButton>(view)->currentTitle(), std::nullopt);
  EXPECT_EQ(classOf(view), "UIButton");
  ASSERT_TRUE(view->layer().valueForKey("tag"));
  EXPECT_EQ(*view->layer().valueForKey("tag"), "guid");
  view->layer().setBorderWidth(4);
  EXPECT_EQ(pictureOf(view), nullptr);
  finish(view->becomeFirstResponder());
  EXPECT_EQ(qt::viewOfWidget(nullptr), nullptr);
  EXPECT_EQ(qt::viewOfWindow(nullptr), nullptr);
}

TEST(Identity, AProgramThatDisconnectsEverythingDoesNotLeaveAStaleView) {
  QWidget window;
  alignas(QWidget) std::byte room[sizeof(QWidget)];
  auto* widget = new (room) QWidget(&window);
  const UIViewRef first = viewOf(*widget);
  widget->disconnect();
  widget->~QWidget();
  widget = new (room) QWidget(&window);
  EXPECT_NE(viewOf(*widget), first);
  EXPECT_EQ(viewOf(*widget)->superview(), viewOf(window));
  widget->~QWidget();
}

TEST(Order, SubviewsAreTheChildWidgetsBackToFront) {
  QWidget window;
  QWidget back(&window);
  QTimer noWidget(&window);
  QDialog dialog(&window);
  QWidget front(&window);
  QWidget agents(&window);
  qt::hideFromWalks(&agents);
  EXPECT_EQ(subviewsOf(viewOf(window)), (std::vector{viewOf(back), viewOf(front)}));
  EXPECT_EQ(qt::viewOfWidget(&agents), nullptr);
  back.raise();
  EXPECT_EQ(subviewsOf(viewOf(window)), (std::vector{viewOf(front), viewOf(back)}));
  const auto* const before = viewOf(window)->subviews().data();
  EXPECT_EQ(viewOf(window)->subviews().data(), before);
  auto third = std::make_unique<QWidget>(&window);
  EXPECT_EQ(viewOf(window)->subviews().size(), 3U);
  third.reset();
  EXPECT_EQ(viewOf(window)->subviews().size(), 2U);
}

TEST(Geometry, FramesBoundsAndConversionsAgree) {
  QWidget window;
  window.setGeometry(30, 40, 300, 200);
  QWidget outer(&window);
  outer.setGeometry(10, 20, 200, 100);
  QWidget inner(&outer);
  inner.setGeometry(5, 6, 50, 40);
  show(window);
  const UIViewRef view = viewOf(inner);
  EXPECT_EQ(view->bounds(), (CGRect{{0, 0}, {50, 40}}));
  EXPECT_EQ(view->frame(), (CGRect{{5, 6}, {50, 40}}));
  EXPECT_EQ(view->center(), (CGPoint{30, 26}));
  EXPECT_EQ(view->convertPointToWindow({1.5, 2}), (CGPoint{16.5, 28}));
  EXPECT_EQ(view->convertPointFromWindow({16.5, 28}), (CGPoint{1.5, 2}));
  EXPECT_EQ(viewOf(window)->frame().size, viewOf(window)->bounds().size);
  const QPoint corner = window.mapToGlobal(QPoint(0, 0));
  EXPECT_EQ(viewOf(window)->frame().origin, (CGPoint{double(corner.x()), double(corner.y())}));
}

TEST(Geometry, WhatStandsInAScrollAreaIsItsSubview) {
  QScrollArea area;
  area.setFrameShape(QFrame::Box);
  auto* const page = new QWidget;
  page->resize(600, 2000);
  QPushButton button("deep", page);
  button.setGeometry(10, 900, 80, 30);
  area.setWidget(page);
  area.resize(200, 200);
  show(area);
  const UIViewRef scroll = viewOf(area);
  EXPECT_EQ(viewOf(*page)->superview(), scroll);
  EXPECT_EQ(subviewsOf(scroll).front(), viewOf(*page));
  EXPECT_EQ(viewOf(*area.viewport()), scroll);
  area.verticalScrollBar()->setValue(890);
  const QRect viewport = area.viewport()->geometry();
  EXPECT_EQ(viewOf(*page)->frame(), qt::toCGRect(viewport)) << "what is shown of it";
  EXPECT_EQ(scroll->hitTest(middleInWindow(viewOf(button))), viewOf(button));
  EXPECT_EQ(platform::convertPoint({0, 0}, viewOf(button), viewOf(*page)), (CGPoint{10, 10}));
}

}  // namespace
}  // namespace tarni::test
