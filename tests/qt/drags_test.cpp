// A synthesized drag scrolls what scrolls, and drags what the program lets be dragged.
#include <QtGui/QMouseEvent>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QScroller>
#include <QtWidgets/QVBoxLayout>

#include "tests/support/QtScreen.h"

namespace tarni::test {
namespace {

TEST(Drags, ScrollAnAreaByTheirOwnLengthAndClickNothing) {
  QScrollArea area;
  auto* const content = new QWidget;
  content->setFixedSize(1000, 2000);
  auto* const button = new QPushButton("Press", content);
  button->setGeometry(0, 0, 300, 300);
  int presses = 0;
  QObject::connect(button, &QPushButton::pressed, [&] { ++presses; });
  area.setWidget(content);
  area.resize(400, 400);
  show(area);
  finish(drag(button, {150, 250}, {150, 50}));
  EXPECT_EQ(area.verticalScrollBar()->value(), 200);
  EXPECT_EQ(area.horizontalScrollBar()->value(), 0);
  finish(drag(area.viewport(), {300, 100}, {180, 100}));
  EXPECT_EQ(area.horizontalScrollBar()->value(), 120);
  EXPECT_EQ(presses, 0);
}

struct Canvas : QWidget {
  void mousePressEvent(QMouseEvent* event) override { path.push_back(event->pos()); }
  void mouseMoveEvent(QMouseEvent* event) override { path.push_back(event->pos()); }
  void mouseReleaseEvent(QMouseEvent* event) override {
    path.push_back(event->pos());
    ++releases;
  }
  std::vector<QPoint> path;
  int releases = 0;
};

TEST(Drags, ScrollRowsByTheirHeight) {
  QListWidget list;
  for (int i = 0; i < 100; ++i) list.addItem(QString::number(i));
  list.resize(200, 300);
  show(list);
  const int row = list.visualItemRect(list.item(0)).height();
  finish(drag(list.viewport(), {50, 250}, {50, 250 - 5 * row}));
  EXPECT_EQ(list.verticalScrollBar()->value(), 5);
  EXPECT_TRUE(list.selectedItems().isEmpty()) << "a drag selects nothing";
}

TEST(Drags, LeaveAnAreaToTheProgramThatScrollsItByItself) {
  QScrollArea area;
  auto* const canvas = new Canvas;
  canvas->setFixedSize(400, 4000);
  area.setWidget(canvas);
  area.resize(400, 400);
  QScroller::scroller(area.viewport());
  show(area);
  finish(drag(area.viewport(), {100, 350}, {100, 50}));
  EXPECT_EQ(canvas->path.size(), 4U);
  EXPECT_EQ(area.verticalScrollBar()->value(), 0);
}

// A path of one point leaves its finger down. It must not disturb what comes later.
TEST(Drags, OfOnePointDoNotSpoilTheNextTap) {
  QWidget window;
  auto* const layout = new QVBoxLayout(&window);
  auto* const first = new QPushButton("First");
  auto* const second = new QPushButton("Second");
  layout->addWidget(first);
  layout->addWidget(second);
  int firstClicks = 0;
  int secondClicks = 0;
  QObject::connect(first, &QPushButton::clicked, [&] { ++firstClicks; });
  QObject::connect(second, &QPushButton::clicked, [&] { ++secondClicks; });
  show(window);
  finish(KIFAdditions::dragAlongPathWithPoints(qt::viewOfWidget(first), {{10, 10}}));
  EXPECT_TRUE(first->isDown());
  finish(tap(second));
  EXPECT_EQ(secondClicks, 1);
  EXPECT_EQ(firstClicks, 0);
  EXPECT_FALSE(first->isDown());
}

}  // namespace
}  // namespace tarni::test
