// A synthesized tap does on every kind of widget what a click of the mouse does.
#include <QtGui/QTouchEvent>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTreeWidget>

#include "platform/UIKit/UIControls.h"
#include "tests/support/QtScreen.h"

namespace tarni::test {
namespace {

class Taps : public PageTest {
 protected:
  void showWindow() {
    window_.resize(400, 300);
    show(window_);
  }
};

TEST_F(Taps, ClickAButtonOnceATime) {
  auto* const button = add(new QPushButton("Press"));
  std::vector<QEvent::Type> seen;
  struct Listener : QObject {
    std::vector<QEvent::Type>* seen = nullptr;
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::MouseButtonDblClick) seen->push_back(event->type());
      return false;
    }
  } listener;
  listener.seen = &seen;
  button->installEventFilter(&listener);
  int clicks = 0;
  QObject::connect(button, &QPushButton::clicked, [&] { ++clicks; });
  showWindow();
  for (int i = 0; i < 3; ++i) finish(tap(button));
  EXPECT_EQ(clicks, 3);
  EXPECT_TRUE(seen.empty()) << "taps in quick order are no double click";
}

TEST_F(Taps, ReachNobodyOutsideTheWindow) {
  int clicks = 0;
  auto* const button = add(new QPushButton("Press"));
  QObject::connect(button, &QPushButton::pressed, [&] { ++clicks; });
  QMenu menu;
  menu.addAction("Entry");
  showWindow();
  menu.popup(window_.mapToGlobal(QPoint(10, 10)));
  finish(KIFAdditions::FaketapAtPoint(qt::viewOfWidget(button), {-100, -200}));
  EXPECT_TRUE(menu.isVisible());
  const QPoint outside = menu.mapFromGlobal(QPoint(-100, -200));
  finish(KIFAdditions::FaketapAtPoint(qt::viewOfWidget(&menu),
                                      {double(outside.x()), double(outside.y())}));
  EXPECT_TRUE(menu.isVisible()) << "and not everything beside the menu that closes it";
  EXPECT_EQ(clicks, 0);
}

// A widget that takes touches gets them, all fingers in one event.
TEST_F(Taps, ComeAsTouchesToWhoTakesThem) {
  struct Pad : QWidget {
    Pad() { setAttribute(Qt::WA_AcceptTouchEvents); }
    bool event(QEvent* event) override {
      if (event->type() != QEvent::TouchBegin) return QWidget::event(event);
      const auto* const touch = static_cast<QTouchEvent*>(event);
#if QT_VERSION_MAJOR >= 6
      for (const auto& point : touch->points()) begun.push_back(point.position());
#else
      for (const auto& point : touch->touchPoints()) begun.push_back(point.pos());
#endif
      event->accept();
      return true;
    }
    void mousePressEvent(QMouseEvent*) override {
      ++mousePresses;
    }
    std::vector<QPointF> begun;
    int mousePresses = 0;
  };
  auto* const pad = add(new Pad);
  showWindow();
  finish(KIFAdditions::twoFingerTapAtPoint(qt::viewOfWidget(pad), {100, 100}));
  EXPECT_THAT(pad->begun, testing::ElementsAre(QPointF(60, 60), QPointF(140, 140)));
  EXPECT_EQ(pad->mousePresses, 0);
}

TEST_F(Taps, WorkInAProgramThatTurnsNoTouchIntoAMouse) {
  auto* const button = add(new QPushButton("Press"));
  int clicks = 0;
  QObject::connect(button, &QPushButton::clicked, [&] { ++clicks; });
  showWindow();
  QApplication::setAttribute(Qt::AA_SynthesizeMouseForUnhandledTouchEvents, false);
  finish(tap(button));
  QApplication::setAttribute(Qt::AA_SynthesizeMouseForUnhandledTouchEvents, true);
  EXPECT_EQ(clicks, 1);
}

TEST_F(Taps, StayOutOfALoopThatHoldsInputBack) {
  auto* const button = add(new QPushButton("Press"));
  int clicks = 0;
  QObject::connect(button, &QPushButton::clicked, [&] { ++clicks; });
  showWindow();
  bool hasEnded = false;
  platform::spawn(tap(button), [&](const std::exception_ptr&) { hasEnded = true; });
  for (int i = 0; i < 20; ++i) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  }
  EXPECT_EQ(clicks, 0);
  EXPECT_TRUE(runUntil([&] { return hasEnded; }));
  EXPECT_EQ(clicks, 1);
}

// A style, and the direction in which the desktop's language is read.
struct Look {
  const char* name;
  const char* style;
  Qt::LayoutDirection direction;
};

void PrintTo(const Look& look, std::ostream* output) {
  *output << look.name;
}

class Looks : public Taps, public testing::WithParamInterface<Look> {
 protected:
  void SetUp() override {
    QApplication::setStyle(QString::fromLatin1(GetParam().style));
    QApplication::setLayoutDirection(GetParam().direction);
  }
  void TearDown() override {
    QApplication::setStyle(before_);
    QApplication::setLayoutDirection(Qt::LeftToRight);
  }

 private:
  const QString before_ = QApplication::style()->objectName();
};

INSTANTIATE_TEST_SUITE_P(As, Looks,
                         testing::Values(Look{"Fusion", "Fusion", Qt::LeftToRight},
                                         Look{"Windows", "Windows", Qt::LeftToRight},
                                         Look{"FusionFromTheRight", "Fusion", Qt::RightToLeft},
                                         Look{"WindowsFromTheRight", "Windows", Qt::RightToLeft}),
                         [](const auto& info) { return std::string(info.param.name); });

// The window lies half outside of the screen.
TEST_P(Looks, ChangeNothingForAFinger) {
  auto* const check = add(new QCheckBox("Check"));
  auto* const radio = add(new QRadioButton("Radio"));
  auto* const tree = add(new QTreeWidget);
  auto* const item = new QTreeWidgetItem(tree, {"Sugar"});
  item->setCheckState(0, Qt::Unchecked);
  auto* const tabs = add(new QTabWidget);
  for (const char* const title : {"One", "Two"}) tabs->addTab(new QWidget, title);
  showWindow();
  window_.move(-200, -50);
  for (QWidget* const box : std::initializer_list<QWidget*>{check, radio}) {
    finish(KIFAdditions::tap(qt::viewOfWidget(box)));
  }
  EXPECT_TRUE(check->isChecked());
  EXPECT_TRUE(radio->isChecked());
  // The text beside the box of a row selects the row and switches nothing.
  finish(tapAt(tree->viewport(), tree->visualItemRect(item).center()));
  EXPECT_EQ(item->checkState(0), Qt::Unchecked);
  EXPECT_TRUE(item->isSelected());
  for (const auto& [widget, name] :
       {std::pair<QWidget*, const char*>{tree, "UISwitch"}, {tabs->tabBar(), "UITabBarButton"}}) {
    platform::UIViewRef last;
    for (const auto& view : qt::viewOfWidget(widget)->subviews()) {
      if (view->getClass()->name() == name) last = view;
    }
    ASSERT_TRUE(last) << name;
    finish(KIFAdditions::tap(last));
  }
  EXPECT_EQ(item->checkState(0), Qt::Checked);
  EXPECT_EQ(tabs->currentIndex(), 1);
}

}  // namespace
}  // namespace tarni::test
