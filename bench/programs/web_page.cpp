// What the agent's talk with a page costs inside a Qt program, beside bare evaluations of the
// engine on the same page:  web_page SCRIPTS PAGE COUNT Prints lines of a name and seconds.
// "poll-busy" is the time that the main thread works for a poll.
#include <time.h>

#include <QtCore/QElapsedTimer>
#include <QtWebEngineWidgets/QWebEngineView>
#include <QtWidgets/QApplication>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>

#include "agent/WebView/WebView.h"
#include "agent/core/state/GlobalVars.h"
#include "backends/qt/QtPlatform.h"
#include "backends/qt/views/QtExtension.h"
#include "backends/qt/webengine/WebEngineExtension.h"
#include "platform/Platform.h"

namespace {

using namespace tarni;

constexpr int kFewer = 10;  // one long measurement to so many short ones

double workOfThread() {
  timespec time = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

// Begins something that calls back at its end, on this thread, and lets the program run until then.
void finish(const std::function<void(std::function<void()> done)>& begin) {
  bool isDone = false;
  begin([&isDone] { isDone = true; });
  while (!isDone) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void measure(const char* name, const std::function<void()>& work) {
  QElapsedTimer timer;
  timer.start();
  work();
  std::printf("%s %.9f\n", name, static_cast<double>(timer.nsecsElapsed()) / 1e9);
}

void evaluate(QWebEngineView& view, const char* script) {
  finish([&](const auto& done) {
    view.page()->runJavaScript(QLatin1String(script), [done](const QVariant&) { done(); });
  });
}

// The queue serves what is appended behind the pass when the pass has ended.
void poll() {
  WebView().performRecorderAndPlaybackInjection();
  finish([](const auto& done) { platform::current().dispatch->mainQueue().async(done); });
}

platform::Task<void> callPage(const char* call, std::function<void()> done) {
  WebView pages;
  const platform::UIViewRef view = GlobalVars::sharedInstance()._currentWebView();
  const std::string answer = co_await pages.callJavaScriptFunction(view, call);
  if (answer.empty()) throw std::runtime_error("the page found nothing");
  done();
}

void findInPage() {
  finish([](const auto& done) {
    platform::spawn(callPage("findElements('span','','')", done), [](const std::exception_ptr& e) {
      if (e) std::terminate();
    });
  });
}

void measureAll(QWebEngineView& view, int count) {
  const char* const query =
      "JSON.stringify([...document.querySelectorAll('span')].map((e, i) => ({elementID: `${i}`})))";
  for (int i = 0; i < count; ++i) {
    measure("evaluate", [&] { evaluate(view, "'' + (1 + 1)"); });
    const double before = workOfThread();
    measure("poll", poll);
    std::printf("poll-busy %.9f\n", workOfThread() - before);
    if (i % kFewer != 0) continue;
    measure("query", [&] { evaluate(view, query); });
    measure("find", findInPage);
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc < 4) return 2;
  QWebEngineView view;
  view.resize(800, 600);
  view.load(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[2])));
  view.show();
  qt::extensions().add(std::make_unique<qt::WebEngineExtension>());
  platform::install(qt::qtPlatform());
  REMOTE_CDN_URL = std::string("file://") + argv[1];
  QObject::connect(
      &view, &QWebEngineView::loadFinished, &view,
      [&] {
        // Set once the page has answered that it has its scripts.
        while (!GlobalVars::sharedInstance()._currentWebView()) poll();
        measureAll(view, std::stoi(argv[3]));
        QCoreApplication::exit();
      },
      Qt::QueuedConnection);
  return QApplication::exec();
}
