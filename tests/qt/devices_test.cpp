// The agent's mouse and keyboard do to a program what a person's do, and nobody takes them for a
// person's.
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSplitter>
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

void dragTo(QWidget* from, QPoint start, QWidget* to, QPoint end) {
  const auto drag = [=]() -> Task<void> {
    co_await moveTo(from, start);
    co_await devices().setButton(PointerButton::Left, true);
    // The program may run a loop of its own from here on until the button is up.
    co_await moveTo(from, start + QPoint(QApplication::startDragDistance() + 2, 2));
    co_await moveTo(to, end);
    co_await moveTo(to, end + QPoint(1, 1));
    co_await devices().setButton(PointerButton::Left, false);
  };
  finish(drag());
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
  void SetUp() override {
    auto& runtime = *platform::current().runtime;
    const auto original =
        runtime.class_getInstanceMethod(platform::uikit::UIApplication, "sendEvent:")
            ->implementation;
    original_ = original;
    runtime.class_replaceMethod(
        platform::uikit::UIApplication, "sendEvent:",
        [this, original](const std::vector<platform::Argument>& arguments) {
          ++recorded_;
          original(arguments);
        },
        "v@:@");
  }
  void TearDown() override {
    platform::current().runtime->class_replaceMethod(platform::uikit::UIApplication,
                                                     "sendEvent:", original_, "v@:@");
    EXPECT_EQ(recorded_, 0) << "an act of the agent was shown as a person's";
  }
  void open() {
    window_.resize(400, 300);
    show(window_);
    window_.activateWindow();
    ASSERT_TRUE(runUntil([&] { return window_.isActiveWindow(); }));
  }

  int recorded_ = 0;
  platform::Implementation original_;
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

TEST_F(Devices, PointerDragsSplittersAndItemsAndTurnsTheWheel) {
  auto* const splitter = add(new QSplitter);
  auto* const from = new QListWidget;
  auto* const to = new QListWidget;
  for (int row = 0; row < 100; ++row) from->addItem(QString::number(row));
  from->setDragEnabled(true);
  to->setAcceptDrops(true);
  to->setDragDropMode(QAbstractItemView::DragDrop);
  splitter->addWidget(from);
  splitter->addWidget(to);
  open();
  const int width = from->width();
  dragTo(splitter->handle(1), {2, 50}, splitter->handle(1), {61, 49});
  EXPECT_GT(from->width(), width + 40);
  dragTo(from->viewport(), from->visualItemRect(from->item(1)).center(), to->viewport(), {20, 40});
  ASSERT_TRUE(runUntil([&] { return to->count() == 1; })) << "nothing was dropped";
  EXPECT_EQ(to->item(0)->text(), "1");
  finish(moveTo(from->viewport(), {20, 40}));
  finish(devices().turnWheel(0, 2));
  EXPECT_EQ(from->verticalScrollBar()->value(), 2 * QApplication::wheelScrollLines());
}

TEST_F(Devices, KeysTypeCarryModifiersAndRunShortcuts) {
  auto* const field = add(new QLineEdit);
  auto* const list = add(new QListWidget);
  list->addItems({"a", "b", "c", "d"});
  auto* const button = add(new QPushButton);
  list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  QString ran;
  for (const char* const keys : {"Ctrl+S", "Ctrl+Shift+F2", "Ctrl++"}) {
    auto* const action = new QAction(&window_);
    action->setShortcut(QKeySequence(QString::fromLatin1(keys)));
    QObject::connect(action, &QAction::triggered, [&, keys] { ran = keys; });
    window_.addAction(action);
  }
  open();
  field->setFocus();
  for (const char* const key : {"a", " ", "Ä", "ж", "b", "Backspace", "ArrowLeft", "x"}) press(key);
  pressWith("Shift", "y");
  EXPECT_EQ(field->text(), QString::fromUtf8("a ÄxYж"));
  pressWith("Control", "a");
  EXPECT_EQ(field->selectedText(), field->text());
  pressWith("Control", "s");
  EXPECT_EQ(ran, "Ctrl+S");
  pressWith("Control", "+");
  EXPECT_EQ(ran, "Ctrl++");
  finish(devices().setKey("Shift", true));
  pressWith("Control", "F2");
  finish(devices().setKey("Shift", false));
  EXPECT_EQ(ran, "Ctrl+Shift+F2");
  press("Tab");
  EXPECT_TRUE(list->hasFocus());
  pressWith("Shift", "Tab");
  EXPECT_TRUE(field->hasFocus());
  EXPECT_THROW(press("NoSuchKey"), platform::NSException);
  EXPECT_THROW(press(""), platform::NSException);

  const auto row = [&](int at) { return list->visualItemRect(list->item(at)).center(); };
  click(list->viewport(), row(0));
  finish(devices().setKey("Control", true));
  click(list->viewport(), row(2));
  finish(devices().setKey("Control", false));
  EXPECT_EQ(list->selectedItems().size(), 2);
  finish(devices().commitText("d"));
  EXPECT_EQ(list->currentRow(), 3) << "what takes no input method gets keys";
  button->setFocus();
  EXPECT_THROW(finish(devices().commitText("d")), platform::NSException);
}

}  // namespace
}  // namespace tarni::test
