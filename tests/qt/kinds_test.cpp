// Under which class, and as a kind of which, a widget appears.
#include <QtCore/QStringListModel>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListView>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>

#include "tests/qt/Support.h"

namespace tarni::test {

// Classes of an application under test.
class KeyButton : public QPushButton {
  Q_OBJECT
 public:
  using QPushButton::QPushButton;
};
class DigitButton : public KeyButton {
  Q_OBJECT
 public:
  using KeyButton::KeyButton;
};
class UndeclaredButton : public QPushButton {
 public:
  using QPushButton::QPushButton;
};
class QuickPanel : public QWidget {
  Q_OBJECT
 public:
  using QWidget::QWidget;
};
class NightSwitch : public QAbstractButton {
  Q_OBJECT
 public:
  using QAbstractButton::QAbstractButton;
  void paintEvent(QPaintEvent*) override {}
};

namespace {

template <typename Widget>
UIViewRef childOf(QWidget& window) {
  return viewOf(*new Widget(&window));
}

TEST(Kinds, ClassesOfTheApplicationKeepTheirName) {
  QWidget window;
  const UIViewRef digit = childOf<DigitButton>(window);
  EXPECT_EQ(classOf(digit), "tarni::test::DigitButton");
  EXPECT_EQ(digit->getClass()->superclass()->name(), "tarni::test::KeyButton");
  EXPECT_TRUE(digit->isKindOfClass(uikit::UIButton));
  EXPECT_TRUE(as<platform::UIButton>(digit));
  EXPECT_EQ(childOf<KeyButton>(window)->getClass(), digit->getClass()->superclass());
  EXPECT_EQ(classOf(childOf<UndeclaredButton>(window)), "UIButton");
}

TEST(Kinds, AButtonThatIsCalledASwitchIsOne) {
  QWidget window;
  auto* const button = new NightSwitch(&window);
  button->setCheckable(true);
  const auto night = as<platform::UISwitch>(viewOf(*button));
  ASSERT_TRUE(night);
  EXPECT_TRUE(viewOf(*button)->isKindOfClass(uikit::UISwitch));
  finish(night->setOn(true));
  EXPECT_TRUE(button->isChecked());
  // One that cannot be checked only has the name.
  EXPECT_FALSE(as<platform::UISwitch>(childOf<NightSwitch>(window)));
}

TEST(Kinds, ATopLevelWidgetIsAWindowAndAControlThatIsOneStandsInAWindow) {
  QMessageBox question;
  EXPECT_EQ(classOf(viewOf(question)), "UIWindow");
  EXPECT_EQ(viewOf(question)->window(), viewOf(question));
  QRadioButton alone("Alone");
  alone.setWindowTitle("Title");
  alone.resize(400, 40);
  show(alone);
  const UIViewRef button = viewOf(alone);
  const UIViewRef window = button->window();
  EXPECT_EQ(qt::viewOfWindow(alone.windowHandle()), window);
  EXPECT_EQ(classOf(window), "UIWindow");
  EXPECT_EQ(window->accessibilityLabel(), "Title");
  EXPECT_EQ(window->superview(), nullptr);
  EXPECT_EQ(window->bounds().size, (CGSize{400, 40}));
  EXPECT_EQ(subviewsOf(window), std::vector{button});
  EXPECT_EQ(classOf(button), "UIButton");
  EXPECT_EQ(button->superview(), window);
  EXPECT_EQ(button->frame().size, button->bounds().size);
  EXPECT_EQ(button->convertPointToWindow({0, 0}), button->frame().origin);
  EXPECT_EQ(window->hitTest(button->center()), button);
  EXPECT_EQ(window->hitTest({390, 20}), window) << "beside what a click works on";
}

TEST(Kinds, AreThoseOfWhatAWidgetIsNow) {
  QWidget window;
  auto* const panel = new QuickPanel(&window);
  EXPECT_FALSE(viewOf(*panel)->isKindOfClass(uikit::UIWindow));
  EXPECT_EQ(classOf(viewOf(*panel)), "tarni::test::QuickPanel");
  panel->setParent(nullptr);
  EXPECT_TRUE(viewOf(*panel)->isKindOfClass(uikit::UIWindow));
  EXPECT_EQ(classOf(viewOf(*panel)), "tarni::test::QuickPanel");
  delete panel;

  auto* const label = new QLabel("text", &window);
  EXPECT_EQ(classOf(viewOf(*label)), "UILabel");
  label->setPixmap(QPixmap(4, 4));
  EXPECT_EQ(classOf(viewOf(*label)), "UIImageView");

  QStringListModel model({"a", "b"});
  auto* const list = new QListView(&window);
  list->setModel(&model);
  list->setViewMode(QListView::IconMode);
  show(window);
  EXPECT_EQ(classOf(viewOf(*list)), "UICollectionView");
  EXPECT_EQ(subviewsOf(viewOf(*list), "UICollectionViewCell").size(), 2U);
  list->setViewMode(QListView::ListMode);
  EXPECT_EQ(classOf(viewOf(*list)), "UITableView");
  EXPECT_EQ(subviewsOf(viewOf(*list), "UITableViewCell").size(), 2U);
}

}  // namespace
}  // namespace tarni::test

#include "kinds_test.moc"
