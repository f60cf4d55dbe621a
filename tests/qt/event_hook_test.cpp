// Every event of the program passes through "sendEvent:" before the program has it.
#include <qpa/qwindowsysteminterface.h>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWizard>

#include "agent/elements/IdentityTag.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/XpathManager.h"
#include "tests/support/QtScreen.h"

namespace tarni::test {
namespace {

namespace uikit = platform::uikit;
using platform::Argument;
using platform::UIEventType;
using platform::UITouchPhase;

// An event as a hook sees it.
struct Seen {
  UIEventType type;
  std::vector<UITouchPhase> phases;
  platform::UIViewRef view;
  platform::CGPoint location;
};

class EventHook : public testing::Test {
 protected:
  void SetUp() override {
    layout_->addWidget(button_);
    layout_->addWidget(field_);
    QObject::connect(button_, &QPushButton::pressed, [this] { ++presses_; });
    QObject::connect(button_, &QPushButton::clicked, [this] { ++clicks_; });
    window_.resize(300, 200);
    show(window_);
    auto& runtime = *platform::current().runtime;
    original_ = runtime.class_getInstanceMethod(uikit::UIApplication, "sendEvent:")->implementation;
    hookWith([] {});
  }
  void TearDown() override {
    platform::current().runtime->class_replaceMethod(uikit::UIApplication, "sendEvent:", original_,
                                                     "v@:@");
  }

  // `meanwhile` runs while an event is shown, before the program has it.
  void hookWith(const std::function<void()>& meanwhile) {
    const auto hook = [this, meanwhile](const std::vector<Argument>& arguments) {
      note(*std::get<platform::UIEvent*>(arguments.front()));
      pressesBefore_ = presses_;
      meanwhile();
      original_(arguments);
    };
    platform::current().runtime->class_replaceMethod(uikit::UIApplication, "sendEvent:", hook,
                                                     "v@:@");
  }

  void note(const platform::UIEvent& event) {
    Seen seen{event.type(), {}, nullptr, {}};
    for (const auto& touch : event.allTouches()) {
      seen.phases.push_back(touch->phase());
      seen.view = touch->view();
      seen.location = touch->locationInView(nullptr);
    }
    seen_.push_back(seen);
  }

  // What the window system says of the mouse; the window need not have the point.
  void mouse(QPoint inWindow, Qt::MouseButtons buttons, Qt::MouseButton button, QEvent::Type type) {
    QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::AsynchronousDelivery>(
        window_.windowHandle(), QPointF(inWindow), QPointF(window_.mapToGlobal(inWindow)), buttons,
        button, type);
    QCoreApplication::processEvents();
  }
  void press(QPoint at) { mouse(at, Qt::LeftButton, Qt::LeftButton, QEvent::MouseButtonPress); }
  void move(QPoint to) { mouse(to, Qt::LeftButton, Qt::NoButton, QEvent::MouseMove); }
  void release(QPoint at) { mouse(at, Qt::NoButton, Qt::LeftButton, QEvent::MouseButtonRelease); }

  QPoint middleOf(QWidget* widget) const {
    return widget->mapTo(widget->window(), widget->rect().center());
  }
  std::vector<UITouchPhase> phases() const {
    std::vector<UITouchPhase> all;
    for (const Seen& seen : seen_) all.insert(all.end(), seen.phases.begin(), seen.phases.end());
    return all;
  }

  QWidget window_;
  QVBoxLayout* layout_ = new QVBoxLayout(&window_);
  QPushButton* button_ = new QPushButton("Press");
  QLineEdit* field_ = new QLineEdit;
  int presses_ = 0;
  int clicks_ = 0;
  int pressesBefore_ = -1;
  std::vector<Seen> seen_;
  platform::Implementation original_;
};

TEST_F(EventHook, ShowsAClickBeforeTheProgramHasIt) {
  const QPoint at = middleOf(button_);
  press(at);
  EXPECT_EQ(pressesBefore_, 0);
  EXPECT_EQ(presses_, 1);
  release(at);
  EXPECT_EQ(clicks_, 1);
  EXPECT_THAT(phases(), testing::ElementsAre(UITouchPhase::Began, UITouchPhase::Ended));
  EXPECT_EQ(seen_[0].view, qt::viewOfWidget(button_));
  EXPECT_EQ(seen_[0].location, (platform::CGPoint{at.x() + 0.5, at.y() + 0.5}));
}

TEST_F(EventHook, KeepsTheViewOnWhichATouchBegan) {
  press(middleOf(button_));
  move(middleOf(field_));
  release(middleOf(field_));
  EXPECT_THAT(phases(),
              testing::ElementsAre(UITouchPhase::Began, UITouchPhase::Moved, UITouchPhase::Ended));
  for (const Seen& seen : seen_) EXPECT_EQ(seen.view, qt::viewOfWidget(button_));
  EXPECT_EQ(clicks_, 0);
}

TEST_F(EventHook, HitsNothingInAWindowBehindAModalOne) {
  QDialog modal(&window_);
  modal.setModal(true);
  show(modal);
  const QPoint at = middleOf(button_);
  press(at);
  release(at);
  EXPECT_EQ(presses_, 0);
  ASSERT_EQ(seen_.size(), 2U);
  EXPECT_EQ(seen_[0].view, nullptr) << "what the program never gets is no touch on a view";
  modal.close();
  press(at);
  release(at);
  EXPECT_EQ(clicks_, 1);
  EXPECT_EQ(seen_[2].view, qt::viewOfWidget(button_));
}

TEST_F(EventHook, FindsWhatIsMeantWhileMenusAreOpen) {
  auto* const bar = new QMenuBar;
  layout_->setMenuBar(bar);
  QMenu* const file = bar->addMenu("File");
  QMenu* const sub = file->addMenu("Sub");
  QAction* const deep = sub->addAction("Deep");
  QCoreApplication::processEvents();
  const auto entry = [](auto& widget, QAction* action) {
    const QPoint middle = widget.actionGeometry(action).center();
    return qt::viewOfWidget(&widget)->hitTest({double(middle.x()), double(middle.y())});
  };
  // Whatever popup is open, the window system names the window that has the mouse.
  const auto place = [this](auto& widget, QAction* action) {
    return window_.mapFromGlobal(widget.mapToGlobal(widget.actionGeometry(action).center()));
  };
  press(place(*bar, file->menuAction()));
  release(place(*bar, file->menuAction()));
  ASSERT_TRUE(runUntil([&] { return file->isVisible(); }));
  seen_.clear();
  for (const int x : {-2, -1, 0}) move(place(*file, sub->menuAction()) + QPoint(x, 0));
  ASSERT_TRUE(runUntil([&] { return sub->isVisible() && !seen_.empty(); }));
  EXPECT_EQ(seen_[0].view, entry(*file, sub->menuAction())) << "pointing opened it";
  UIViewsManager().identifyViews(platform::current().application->keyWindow());
  const XpathManager& positions = XpathManager::sharedInstance();
  EXPECT_EQ(positions.getPositionXpathOfUIView(qt::viewOfWidget(bar)), "\\UINavigationBar[0]");
  EXPECT_EQ(positions.getPositionXpathOfUIView(qt::viewOfWidget(file)), std::nullopt);
  const std::string first = "\\UIActionButton[0]";
  const platform::UIViewRef subEntry = entry(*file, sub->menuAction());
  EXPECT_EQ(positions.getPositionXpathOfUIView(subEntry), first);
  EXPECT_EQ(positions.getPositionXpathOfUIView(entry(*sub, deep)), first);
  EXPECT_FALSE(positions.isFiledUnder(identityTag(subEntry), first)) << "it is the submenu's";
  EXPECT_THAT(phases(), testing::ElementsAre(UITouchPhase::Began, UITouchPhase::Ended));
  seen_.clear();
  const platform::UIViewRef deepEntry = entry(*sub, deep);
  press(place(*sub, deep));
  release(place(*sub, deep));
  EXPECT_EQ(seen_.at(0).view, deepEntry);
  EXPECT_FALSE(file->isVisible());
  press(place(*bar, file->menuAction()));
  release(place(*bar, file->menuAction()));
  seen_.clear();
  press(place(*bar, file->menuAction()));
  release(place(*bar, file->menuAction()));
  EXPECT_EQ(seen_.at(0).view->accessibilityLabel(), "dismiss popup");
  EXPECT_FALSE(file->isVisible());
}

TEST_F(EventHook, TakesNeitherHoveringNorOtherButtonsForFingers) {
  const QPoint at = middleOf(button_);
  mouse(at, Qt::NoButton, Qt::NoButton, QEvent::MouseMove);
  mouse(at, Qt::RightButton, Qt::RightButton, QEvent::MouseButtonPress);
  mouse(at, Qt::NoButton, Qt::RightButton, QEvent::MouseButtonRelease);
  EXPECT_TRUE(seen_.empty());
}

TEST_F(EventHook, GivesUpAFingerWhoseReleaseWentElsewhere) {
  press(middleOf(button_));
  mouse(middleOf(field_), Qt::NoButton, Qt::NoButton, QEvent::MouseMove);
  press(middleOf(field_));
  EXPECT_THAT(phases(), testing::ElementsAre(UITouchPhase::Began, UITouchPhase::Began));
  release(middleOf(field_));
}

TEST_F(EventHook, ShowsKeysAndWheelsAsOtherEvents) {
  field_->setFocus();
  QWindowSystemInterface::handleKeyEvent<QWindowSystemInterface::AsynchronousDelivery>(
      window_.windowHandle(), QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a");
  QWindowSystemInterface::handleWheelEvent(window_.windowHandle(), QPointF(5, 5), QPointF(5, 5),
                                           QPoint(), QPoint(0, 120));
  QCoreApplication::processEvents();
  ASSERT_EQ(seen_.size(), 2U);
  EXPECT_EQ(seen_[0].type, UIEventType::Presses);
  EXPECT_EQ(seen_[1].type, UIEventType::Scroll);
}

TEST_F(EventHook, SeesEachSynthesizedSendOnceWithItsOwnTouches) {
  finish(tap(button_));
  EXPECT_THAT(phases(), testing::ElementsAre(UITouchPhase::Began, UITouchPhase::Ended));
  EXPECT_EQ(seen_[0].view, qt::viewOfWidget(button_));
  EXPECT_EQ(clicks_, 1);
}

// In spy mode the recorder answers a pick with a tap of its own, outside every screen.
TEST_F(EventHook, KeepsATouchFromTheProgramThatWasReplaced) {
  bool isPicking = true;
  hookWith([&] {
    if (std::exchange(isPicking, false)) {
      platform::spawn(KIFAdditions::FaketapAtPoint(qt::viewOfWidget(button_), {-100, -200}), {});
    }
  });
  press(middleOf(button_));
  move(middleOf(button_));
  release(middleOf(button_));
  EXPECT_EQ(presses_, 0);
  EXPECT_TRUE(runUntil([&] { return seen_.size() == 5; })) << "the finger's and the tap's own";
  press(middleOf(button_));
  release(middleOf(button_));
  EXPECT_EQ(clicks_, 1) << "the next touch reaches the program";
}

TEST_F(EventHook, LetsTheProgramHaveItsEventWhenAHookFails) {
  hookWith([] { throw std::runtime_error("broken"); });
  press(middleOf(button_));
  release(middleOf(button_));
  EXPECT_EQ(clicks_, 1);
}

TEST_F(EventHook, OutlivesViewsThatGoUnderTheFinger) {
  hookWith([this] { delete std::exchange(button_, nullptr); });
  const QPoint at = middleOf(button_);
  press(at);
  release(at);
  ASSERT_EQ(seen_.size(), 2U);
  ASSERT_TRUE(seen_[1].view) << "the test itself keeps it";
  EXPECT_EQ(seen_[1].view->window(), nullptr);
}

TEST_F(EventHook, ShowsAWindowThatAppears) {
  Appearances appearances;
  QWidget another;
  show(another);
  EXPECT_EQ(appearances.heard, "WD");
  QMenu menu;
  menu.addAction("Entry");
  menu.popup(QPoint(10, 10));
  QCoreApplication::processEvents();
  EXPECT_EQ(appearances.heard, "WD") << "a popup is no screen of the program";

  QTabWidget tabs;
  tabs.addTab(new QWidget, "One");
  tabs.addTab(new QWidget, "Two");
  QWizard wizard;
  wizard.addPage(new QWizardPage);
  wizard.addPage(new QWizardPage);
  for (QWidget* const pages : std::initializer_list<QWidget*>{&tabs, &wizard}) show(*pages);
  qt::viewOfWidget(tabs.findChild<QStackedWidget*>());
  qt::viewOfWidget(&wizard);
  for (const auto& turn : {std::function<void()>([&] { tabs.setCurrentIndex(1); }),
                           std::function<void()>([&] { wizard.next(); })}) {
    appearances.heard.clear();
    turn();
    EXPECT_EQ(appearances.heard, "W");
    QCoreApplication::processEvents();
    EXPECT_EQ(appearances.heard, "WD");
  }
}

}  // namespace
}  // namespace tarni::test
