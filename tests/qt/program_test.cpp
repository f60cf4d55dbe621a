// The program's loop under the agent: what runs when, and which window the user faces.
#include <glib.h>

#include <QtCore/QPropertyAnimation>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <algorithm>
#include <future>
#include <thread>

#include "agent/elements/UIViewMemoryCache.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/interaction/UIView_KIFAdditions.h"
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

struct LoopLog : platform::RunLoopObserver {
  LoopLog() { current().application->setRunLoopObserver(this); }
  ~LoopLog() override { current().application->setRunLoopObserver(nullptr); }
  void didWake() noexcept override { EXPECT_TRUE(std::exchange(isWaiting, false)); }
  void willWait(std::string_view beganWith) noexcept override {
    EXPECT_FALSE(std::exchange(isWaiting, true));
    began.emplace_back(beganWith);
  }
  bool has(const std::string& stretch) const {
    return std::ranges::find(began, stretch) != began.end();
  }
  std::vector<std::string> began;
  bool isWaiting = false;
};

TEST(Program, SaysWhatItsThreadDidBetweenItsWaits) {
  QPushButton button("Press");
  button.resize(100, 50);
  show(button);
  finish(current().inputDevices->movePointer(qt::windowOfWidget(&button), {10, 10}));
  QEventLoop loop;
  QObject::connect(&button, &QPushButton::pressed, &loop, &QEventLoop::quit);
  LoopLog log;
  ASSERT_TRUE(runUntil([&] { return !log.began.empty(); }));
  // On a busy machine something else may begin the stretch in which the press comes.
  EXPECT_TRUE(runUntil([&] {
    std::thread client([] {
      current().dispatch->mainQueue().asyncTask(
          [] { return current().inputDevices->setButton(platform::PointerButton::Left, true); });
    });
    loop.exec();
    client.join();
    finish(current().inputDevices->setButton(platform::PointerButton::Left, false));
    return log.has("MouseButtonPress QPushButton");
  })) << testing::PrintToString(log.began);

  // The agent's own work is nothing that the program did.
  QTimer::singleShot(100, &loop, &QEventLoop::quit);
  log.began.clear();
  std::thread agent([] { current().dispatch->mainQueue().sync([] {}); });
  loop.exec();
  agent.join();
  EXPECT_TRUE(log.has(std::string(platform::kMainQueueAlone))) << testing::PrintToString(log.began);
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

TEST(Program, ServesTheMainQueueInsideAModalDialog) {
  QDialog dialog;
  std::thread background([&] {
    EXPECT_TRUE(current().dispatch->mainQueue().sync([&] {
      EXPECT_TRUE(current().dispatch->mainQueue().isMainThread());
      dialog.accept();
    }));
  });
  QTimer::singleShot(10000, &dialog, &QDialog::reject);
  EXPECT_EQ(dialog.exec(), QDialog::Accepted);
  background.join();
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

TEST(Program, DrawsAtOnceWithoutRunningOtherEvents) {
  struct Counting : QWidget {
    void paintEvent(QPaintEvent*) override { ++paints; }
    int paints = 0;
  } window;
  show(window);
  bool hasRun = false;
  QTimer::singleShot(0, [&] { hasRun = true; });
  QMetaObject::invokeMethod(
      &window, [&] { hasRun = true; }, Qt::QueuedConnection);
  const int before = window.paints;
  window.update();
  current().transaction->flush();
  EXPECT_EQ(window.paints, before + 1);
  EXPECT_FALSE(hasRun);
  QCoreApplication::processEvents();
}

TEST(Program, MakesUuids) {
  EXPECT_THAT(current().encoding->UUIDString(),
              testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-"
                                    "[0-9A-F]{12}"));
}

// A search works out once a parent what lies in view, and must say what the rule says of each view.
TEST(Program, IsSearchedByWhatLiesInViewAlsoInsideAScrolledArea) {
  QWidget top;
  top.resize(300, 350);
  QScrollArea area(&top);
  auto* const page = new QWidget;
  page->resize(300, 2000);
  for (int i = 0; i < 40; ++i) {
    auto* const box = new QWidget(page);
    box->setGeometry(10, 50 * i, 200, 45);
    (new QPushButton("Press", box))->setGeometry(20, i % 60, 80, 30);
    (new QCheckBox("Check", box))->setGeometry(120, 5, 60, 30);
  }
  area.setWidget(page);
  area.setGeometry(20, 30, 250, 300);
  show(top);
  area.verticalScrollBar()->setValue(333);
  const platform::UIViewRef window = qt::viewOfWidget(&top);
  UIViewsManager manager;
  std::vector<platform::UIViewRef> expected;
  for (const platform::UIViewRef& view : manager.GetAllViewsForPlayer(window, true)) {
    if (KIFAdditions::isVisibleInWindowFrame(view)) expected.push_back(view);
  }
  UIViewMemoryCache& cache = UIViewMemoryCache::sharedInstance();
  cache.clearMemoryCache();
  manager.findElements(window, "", "", "");
  std::vector<platform::UIViewRef> found;
  for (const auto& entry : cache.getUIViewsMemoryCache()) found.push_back(entry.view.lock());
  EXPECT_EQ(found, expected);
  EXPECT_GT(found.size(), 18U);
  EXPECT_LT(found.size(), 40U);
}

}  // namespace
}  // namespace tarni::test
