// The program's loop under the agent: what runs when, and which window the user faces.
#include <glib.h>

#include <QtCore/QPropertyAnimation>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <future>
#include <thread>

#include "backends/qt/program/InputQueue.h"
#include "backends/qt/program/QtProgram.h"
#include "tests/support/QtScreen.h"

namespace tarni::test {
namespace {

using platform::current;

Task<void> note(std::vector<std::string>& log, std::function<void()> action, std::string end) {
  co_await qt::performAsInput(std::move(action));
  log.push_back(std::move(end));
}

TEST(Program, IsWaitedForUnlessItNestsALoop) {
  std::vector<std::string> log;
  finish(note(
      log, [&] { log.emplace_back("action"); }, "resumed"));
  EXPECT_THAT(log, testing::ElementsAre("action", "resumed"));

  log.clear();
  QDialog dialog;
  const auto nest = [&] {
    log.emplace_back("opening");
    dialog.exec();
    log.emplace_back("closed");
  };
  bool hasEnded = false;
  platform::spawn(note(log, nest, "resumed"), [&](const std::exception_ptr&) {
    hasEnded = true;
    EXPECT_TRUE(dialog.isVisible());
    QTimer::singleShot(0, &dialog, &QDialog::accept);
  });
  ASSERT_TRUE(runUntil([&] { return hasEnded && log.size() == 3; }));
  EXPECT_THAT(log, testing::ElementsAre("opening", "resumed", "closed"));
}

Task<void> await(std::shared_ptr<qt::Suspension> suspension, double seconds, bool& hasEnded) {
  qt::Pause pause{std::move(suspension), [] {}, seconds};
  co_await pause;
  hasEnded = true;
}

// The toolkit gives timers numbers that were others' before.
TEST(Program, DoesNotEndAWaitByWhatComesTooLateForAnother) {
  QObject timers;
  const auto takeNumber = [&timers] {
    const int number = timers.startTimer(10000);
    timers.killTimer(number);
    return number;
  };
  const int before = takeNumber();
  const auto late = std::make_shared<qt::Suspension>();
  bool hasLateEnded = false;
  bool hasEnded = false;
  platform::spawn(await(late, 0, hasLateEnded), [](const std::exception_ptr&) {});
  const auto isOver = [&] { return hasLateEnded; };
  while (!isOver()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  for (int taken = 0; takeNumber() != before; ++taken) ASSERT_LT(taken, 1000);
  platform::spawn(await(std::make_shared<qt::Suspension>(), 0.05, hasEnded),
                  [](const std::exception_ptr&) {});
  late->resumeLater();
  EXPECT_TRUE(runUntil([&] { return hasEnded; }));
}

TEST(Program, CountsAllThatItsThreadDoesAndNothingWhileItWaits) {
  QLabel label("Label");
  show(label);
  const auto count = [] { return current().application->workCount(); };
  std::optional<std::uint64_t> atEnd;
  bool wasFound = false;
  QPropertyAnimation animation(&label, "pos");
  animation.setEndValue(QPoint(100, 100));
  animation.setDuration(10'000);
  const auto look = [&] { current().dispatch->mainQueue().sync([&] { atEnd = count(); }); };
  QEventLoop loop;
  std::thread agent([&] {
    // What showing the window has left to do is done at some time.
    for (int turn = 0; turn < 100 && !wasFound; ++turn) {
      look();
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      wasFound = atEnd && atEnd == count();
    }
    current().dispatch->mainQueue().sync([&] { label.hide(); });
    EXPECT_NE(atEnd, count());
    QMetaObject::invokeMethod(
        &label, [&] { animation.start(); }, Qt::BlockingQueuedConnection);
    look();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_NE(atEnd, count());
    QMetaObject::invokeMethod(
        &label, [&] { animation.stop(); }, Qt::BlockingQueuedConnection);
    // What a library calls by itself, without any event of the toolkit's.
    look();
    std::promise<void> wasCalled;
    g_idle_add(
        [](void* promise) {
          static_cast<std::promise<void>*>(promise)->set_value();
          return G_SOURCE_REMOVE;
        },
        &wasCalled);
    wasCalled.get_future().wait();
    EXPECT_NE(atEnd, count());
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
  });
  loop.exec();
  agent.join();
  EXPECT_TRUE(wasFound);
}

TEST(Program, TellsWhatItsCodeThrew) {
  std::vector<std::string> log;
  EXPECT_THROW(finish(note(
                   log, [] { throw std::runtime_error("broken"); }, "resumed")),
               std::runtime_error);
}

TEST(Program, RunsOnWhileTheAgentPausesButStartsNoOtherItem) {
  std::vector<std::string> log;
  auto& queue = current().dispatch->mainQueue();
  queue.asyncTask([&]() -> Task<void> {
    log.emplace_back("first starts");
    return note(
        log, [] {}, "first ends");
  });
  queue.asyncTask([&] {
    log.emplace_back("second starts");
    return pause(0.05);
  });
  queue.async([&] { log.emplace_back("third"); });
  bool hasRun = false;
  QTimer::singleShot(0, [&] { hasRun = true; });
  QElapsedTimer clock;
  clock.start();
  ASSERT_TRUE(runUntil([&] { return log.size() == 4; }));
  EXPECT_GE(clock.elapsed(), 50);
  EXPECT_THAT(log, testing::ElementsAre("first starts", "first ends", "second starts", "third"));
  EXPECT_TRUE(hasRun);
}

TEST(Program, FacesTheUserWithPopupThenDialogThenTheLastWindow) {
  const auto& application = *current().application;
  EXPECT_EQ(application.keyWindow(), nullptr);
  QWidget first;
  QWidget second;
  show(first);
  show(second);
  EXPECT_EQ(application.keyWindow(), qt::viewOfWidget(&second));
  QDialog dialog(&first);
  dialog.setModal(true);
  show(dialog);
  EXPECT_EQ(application.keyWindow(), qt::viewOfWidget(&dialog));
  QMenu menu(&dialog);
  menu.addAction("Entry");
  menu.popup(QPoint(10, 10));
  EXPECT_EQ(application.keyWindow(), qt::viewOfWidget(&menu));
  EXPECT_THAT(application.windowsWithKeyWindow(),
              testing::UnorderedElementsAre(qt::viewOfWidget(&first), qt::viewOfWidget(&second),
                                            qt::viewOfWidget(&dialog), qt::viewOfWidget(&menu)));
  menu.hide();
  dialog.hide();
  second.hide();
  EXPECT_EQ(application.keyWindow(), qt::viewOfWidget(&first));
}

TEST(Program, StaysInTheFieldWhileCompletionsAreOffered) {
  QLineEdit field;
  QCompleter completer(QStringList{"alpha", "alphabet"});
  field.setCompleter(&completer);
  show(field);
  field.activateWindow();
  field.setText("al");
  completer.setCompletionPrefix("al");
  completer.complete();
  ASSERT_TRUE(runUntil([&] { return completer.popup()->isVisible(); }));
  EXPECT_EQ(current().application->keyWindow(), qt::windowOfWidget(&field));
}

TEST(Program, KeepsItsFocusAndItsViewsWhenAnAlertIsShown) {
  QWidget window;
  show(window);
  window.activateWindow();
  const auto before = current().application->windowsWithKeyWindow();
  const auto windows = QGuiApplication::topLevelWindows().size();
  const auto alert = current().alerts->show("Message", "Cancel", std::nullopt);
  EXPECT_EQ(QGuiApplication::topLevelWindows().size(), windows + 1);
  QCoreApplication::processEvents();
  EXPECT_EQ(current().application->windowsWithKeyWindow(), before);
  EXPECT_EQ(current().application->keyWindow(), qt::viewOfWidget(&window));
  alert->dismissWithClickedButtonIndex(0, true);
  alert->dismissWithClickedButtonIndex(0, true);
  EXPECT_TRUE(runUntil([&] { return QGuiApplication::topLevelWindows().size() == windows; }));
}

}  // namespace
}  // namespace tarni::test
