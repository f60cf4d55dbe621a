// A program of many views that nobody drives, and that tells what it costs itself: bench/run-guest
// runs it with the agent and without.
//
//     bench-guest-5 widgets|quick VIEWS SECONDS
//
// Prints "shown" when its window is, and then one JSON object: the milliseconds of processor time
// until then, megabytes, what it takes to stand still in per cent of a core and in wake-ups a
// second, and what each act takes in microseconds (medians).
#include <malloc.h>
#include <qpa/qwindowsysteminterface.h>
#include <sys/resource.h>

#include <QtCore/QDirIterator>
#include <QtCore/QElapsedTimer>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTimer>
#include <QtGui/QStyleHints>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <algorithm>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace {

constexpr int kActs = 200;
constexpr int kQuietMs = 2000;
constexpr int kWidth = 1000;
constexpr int kHeight = 800;
const QPoint kOnButton{50, 20};
const QPoint kOnList{500, 400};

// What is shown, and what its acts have come to.
struct Screen {
  virtual ~Screen() = default;
  virtual QWindow& window() = 0;
  virtual long clicks() const = 0;
  virtual double scrolled() const = 0;
  virtual long paintings() const = 0;
  virtual void paint() = 0;
};

// A button above a list of which a screenful is in sight.
class Widgets : public Screen {
 public:
  explicit Widgets(int views) {
    window_.resize(kWidth, kHeight);
    auto* const button = new QPushButton("Press", &window_);
    button->setGeometry(0, 0, 100, 40);
    QObject::connect(button, &QPushButton::clicked, [this] { ++clicks_; });
    area_ = new QScrollArea(&window_);
    area_->setGeometry(0, 50, kWidth, kHeight - 50);
    auto* const list = new QWidget;
    list->resize(kWidth - 40, views);
    // Ten in a group, as the toolkit's own search among siblings is not what is measured.
    QWidget* group = nullptr;
    for (int number = 0; number < views; ++number) {
      if (number % 10 == 0) {
        group = new QWidget(list);
        group->setGeometry(0, number * 20, kWidth - 40, 200);
        continue;
      }
      auto* const label = new QLabel("Label " + QString::number(number), group);
      label->setGeometry(0, number % 10 * 20, 200, 20);
    }
    list->resize(kWidth - 40, views * 20);
    area_->setWidget(list);
    window_.show();
    // Which of the two is asked to paint depends on the toolkit's version.
    window_.installEventFilter(&paints_);
    window_.windowHandle()->installEventFilter(&paints_);
  }
  QWindow& window() override { return *window_.windowHandle(); }
  long clicks() const override { return clicks_; }
  double scrolled() const override { return area_->verticalScrollBar()->value(); }
  long paintings() const override { return paints_.seen; }
  void paint() override {
    window_.repaint();
    ++paints_.seen;
  }

 private:
  struct Paints : QObject {
    long seen = 0;
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::UpdateRequest) ++seen;
      return false;
    }
  };

  QWidget window_;
  QScrollArea* area_ = nullptr;
  Paints paints_;
  long clicks_ = 0;
};

class Quick : public Screen {
 public:
  explicit Quick(int views) {
    QQmlComponent component(&engine_);
    component.setData(QByteArray("import QtQuick 2.15\nimport QtQuick.Controls 2.15\n"
                                 "import QtQuick.Window 2.15\n"
                                 "Window { width: 1000; height: 800; visible: true\n"
                                 "  property int clicks: 0\n"
                                 "  property alias scrolled: list.contentY\n"
                                 "  Button { width: 100; height: 40; onClicked: clicks++ }\n"
                                 "  Flickable { id: list; y: 50; width: 1000; height: 750\n"
                                 "    contentHeight: column.children.length * 200\n"
                                 "    Item { id: column; width: 960; Repeater { model: ") +
                          QByteArray::number(views / 10) +
                          "\n      Item { y: index * 200; width: 960; height: 200\n"
                          "        property int group: index\n"
                          "        Repeater { model: 9; Text { y: index * 20; width: 200\n"
                          "          text: 'Label ' + (group * 10 + index) } } } } } } }",
                      QUrl("file:///application/guest.qml"));
    window_.reset(qobject_cast<QQuickWindow*>(component.create()));
    if (!window_) qFatal("%s", qPrintable(component.errorString()));
    QObject::connect(window_.get(), &QQuickWindow::frameSwapped, [this] { ++paintings_; });
  }
  QWindow& window() override { return *window_; }
  long clicks() const override { return window_->property("clicks").toInt(); }
  double scrolled() const override { return window_->property("scrolled").toReal(); }
  long paintings() const override { return paintings_; }
  void paint() override { window_->update(); }

 private:
  QQmlEngine engine_;
  std::unique_ptr<QQuickWindow> window_;
  long paintings_ = 0;
};

void runUntil(const std::function<bool()>& done) {
  while (!done()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void rest(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

// Microseconds, the median.
double timeOf(const std::function<void()>& act) {
  std::vector<double> times;
  for (int turn = 0; turn < kActs; ++turn) {
    QElapsedTimer clock;
    clock.start();
    act();
    times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e3);
  }
  std::nth_element(times.begin(), times.begin() + kActs / 2, times.end());
  return times[kActs / 2];
}

void click(Screen& screen) {
  QWindow& window = screen.window();
  const long before = screen.clicks();
  const QPoint global = window.mapToGlobal(kOnButton);
  QWindowSystemInterface::handleMouseEvent(&window, kOnButton, global, Qt::LeftButton,
                                           Qt::LeftButton, QEvent::MouseButtonPress);
  QWindowSystemInterface::handleMouseEvent(&window, kOnButton, global, Qt::NoButton, Qt::LeftButton,
                                           QEvent::MouseButtonRelease);
  runUntil([&] { return screen.clicks() != before; });
}

void paint(Screen& screen) {
  const long before = screen.paintings();
  screen.paint();
  runUntil([&] { return screen.paintings() != before; });
}

// To and fro, until it is on screen.
void scroll(Screen& screen) {
  QWindow& window = screen.window();
  const double before = screen.scrolled();
  const long paintings = screen.paintings();
  const int notch = before > 0 ? 120 : -120;
  QWindowSystemInterface::handleWheelEvent(&window, kOnList, window.mapToGlobal(kOnList), {},
                                           {0, notch}, Qt::NoModifier, Qt::NoScrollPhase);
  runUntil([&] { return screen.scrolled() != before && screen.paintings() != paintings; });
}

double processorSeconds() {
  rusage used{};
  getrusage(RUSAGE_SELF, &used);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(used.ru_utime) + seconds(used.ru_stime);
}

// The number behind `key` in a file of /proc.
double statusOf(const QString& path, const QByteArray& key) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : file.readAll().split('\n')) {
    if (line.startsWith(key + ':'))
      return line.mid(key.size() + 1).trimmed().split(' ')[0].toDouble();
  }
  return 0;
}

// Of all threads: how often one has gone to sleep is how often one was woken.
double wakeUps() {
  double all = 0;
  QDirIterator threads("/proc/self/task", QDir::Dirs | QDir::NoDotAndDotDot);
  while (threads.hasNext()) all += statusOf(threads.next() + "/status", "voluntary_ctxt_switches");
  return all;
}

double megabytes() {
  malloc_trim(0);
  return statusOf("/proc/self/status", "VmRSS") / 1024;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  // One click after the other is not a double click.
  QGuiApplication::styleHints()->setMouseDoubleClickInterval(0);
  const QStringList words = QApplication::arguments();
  if (words.size() != 4) qFatal("widgets|quick VIEWS SECONDS");
  const int views = words[2].toInt();
  const double seconds = words[3].toDouble();

  std::unique_ptr<Screen> screen;
  if (words[1] == "quick") {
    screen = std::make_unique<Quick>(views);
  } else {
    screen = std::make_unique<Widgets>(views);
  }
  screen->window().requestActivate();
  runUntil([&] { return screen->window().isExposed(); });
  QJsonObject told;
  told["startWork"] = processorSeconds() * 1000;
  puts("shown");
  fflush(stdout);

  rest(kQuietMs);
  told["memory"] = megabytes();
  // From beside: an event that begins to measure would be one that the program handles.
  std::thread watch([&told, seconds] {
    std::this_thread::sleep_for(std::chrono::milliseconds(kQuietMs));
    const double woken = wakeUps();
    const double used = processorSeconds();
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    told["rest"] = (processorSeconds() - used) / seconds * 100;
    told["wakeUps"] = (wakeUps() - woken) / seconds;
  });
  rest(static_cast<int>(seconds * 1000) + 2 * kQuietMs);
  watch.join();

  told["click"] = timeOf([&] { click(*screen); });
  told["paint"] = timeOf([&] { paint(*screen); });
  told["scroll"] = timeOf([&] { scroll(*screen); });
  printf("%s\n", QJsonDocument(told).toJson(QJsonDocument::Compact).constData());
}
