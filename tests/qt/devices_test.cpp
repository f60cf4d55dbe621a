// The agent's mouse and keyboard do to a program what a person's do.
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <map>

#include "platform/Foundation/NSException.h"
#include "tests/support/QtScreen.h"

namespace tarni::test {
namespace {

using platform::PointerButton;
using testing::ElementsAre;

platform::InputDevices& devices() {
  return *platform::current().inputDevices;
}

Task<void> moveTo(QWidget* widget, QPoint point) {
  const QPoint inWindow = widget->mapTo(widget->window(), point);
  return devices().movePointer(qt::windowOfWidget(widget),
                               {double(inWindow.x()), double(inWindow.y())});
}

Task<void> clickOn(QWidget* widget, QPoint point = {5, 5},
                   PointerButton button = PointerButton::Left) {
  co_await moveTo(widget, point);
  co_await devices().setButton(button, true);
  co_await devices().setButton(button, false);
}

void click(QWidget* widget, QPoint point, PointerButton button = PointerButton::Left) {
  finish(clickOn(widget, point, button));
}

void press(const char* key) {
  finish(devices().setKey(key, true));
  finish(devices().setKey(key, false));
}

void pressWith(const char* modifier, const char* key) {
  finish(devices().setKey(modifier, true));
  press(key);
  finish(devices().setKey(modifier, false));
}

// The names of the pointer's events, in order.
struct Target : QWidget {
  explicit Target() {
    setMinimumSize(80, 40);
    setMouseTracking(true);
  }
  bool event(QEvent* event) override {
    static const std::map<QEvent::Type, const char*> kNames = {
        {QEvent::Enter, "enter"},
        {QEvent::Leave, "leave"},
        {QEvent::MouseButtonPress, "press"},
        {QEvent::MouseButtonRelease, "release"},
        {QEvent::MouseButtonDblClick, "double"},
        {QEvent::ContextMenu, "menu"}};
    const auto name = kNames.find(event->type());
    if (name == kNames.end()) return QWidget::event(event);
    seen.emplace_back(name->second);
    return true;
  }
  std::vector<std::string> seen;
};

class Devices : public PageTest {
 protected:
  void open() {
    window_.resize(400, 300);
    show(window_);
    window_.activateWindow();
    ASSERT_TRUE(runUntil([&] { return window_.isActiveWindow(); }));
  }
};

TEST_F(Devices, PointerIsFollowedByWhatItRestsOnAndPresses) {
  auto* const first = add(new Target);
  auto* const second = add(new Target);
  open();
  finish(moveTo(first, {10, 10}));
  finish(moveTo(second, {10, 10}));
  EXPECT_THAT(first->seen, ElementsAre("enter", "leave"));
  second->seen.clear();
  click(second, {10, 10});
  click(second, {10, 10});
  EXPECT_THAT(second->seen, ElementsAre("press", "release", "press", "release"))
      << "where the pointer goes to anew it clicks anew";
  for (const bool isDown : {true, false}) {
    finish(devices().setButton(PointerButton::Left, isDown));
  }
  EXPECT_THAT(second->seen,
              ElementsAre("press", "release", "press", "release", "double", "release"));
  click(first, {10, 10}, PointerButton::Right);
  EXPECT_THAT(first->seen, ElementsAre("enter", "leave", "enter", "press", "menu", "release"));
}

TEST_F(Devices, WheelAndClicksAndKeysCarryModifiersAsAPersons) {
  auto* const field = add(new QLineEdit);
  auto* const list = add(new QListWidget);
  auto* const button = add(new QPushButton);
  for (int row = 0; row < 100; ++row) list->addItem(QString::number(row));
  list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  open();
  finish(moveTo(list->viewport(), {20, 40}));
  finish(devices().turnWheel(0, 2));
  EXPECT_EQ(list->verticalScrollBar()->value(), 2 * QApplication::wheelScrollLines());
  list->scrollToTop();
  const auto row = [&](int at) { return list->visualItemRect(list->item(at)).center(); };
  click(list->viewport(), row(0));
  finish(devices().setKey("Control", true));
  click(list->viewport(), row(2));
  finish(devices().setKey("Control", false));
  EXPECT_EQ(list->selectedItems().size(), 2);
  finish(devices().commitText("3"));
  EXPECT_EQ(list->currentRow(), 3) << "what takes no input method gets keys";
  button->setFocus();
  EXPECT_THROW(finish(devices().commitText("d")), platform::NSException);
  field->setFocus();
  press("Tab");
  EXPECT_TRUE(list->hasFocus());
  pressWith("Shift", "Tab");
  EXPECT_TRUE(field->hasFocus());
}

}  // namespace
}  // namespace tarni::test
