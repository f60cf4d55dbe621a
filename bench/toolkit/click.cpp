// A click by the session channel against what the toolkit itself needs for a press and a release.
#include <benchmark/benchmark.h>
#include <qpa/qwindowsysteminterface.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <memory>

#include "agent/session/calls/Call.h"
#include "agent/session/input/HeldInput.h"
#include "agent/session/screen/Elements.h"
#include "backends/qt/views/ViewRegistry.h"
#include "bench/RatioReporter.h"
#include "bench/toolkit/Loop.h"

namespace tarni::bench {
namespace {

constexpr int kViews = 100;

struct Screen {
  QWidget window;
  QPushButton* button = nullptr;
  long clicks = 0;

  Screen() {
    window.resize(1000, 800);
    for (int number = 0; number < kViews; ++number) {
      auto* const label = new QLabel(QString::number(number), &window);
      label->setGeometry(10, number * 7, 50, 7);
    }
    button = new QPushButton("Pressed", &window);
    button->setGeometry(200, 200, 100, 40);
    QObject::connect(button, &QPushButton::clicked, [this] { ++clicks; });
    window.show();
    window.activateWindow();
    letItShow([this] { return window.isActiveWindow(); });
  }
};

void two_events(benchmark::State& state) {
  const Screen screen;
  QWindow* const window = screen.window.windowHandle();
  const QPointF point = screen.button->geometry().center();
  const auto send = [&](Qt::MouseButtons buttons, QEvent::Type type) {
    QWindowSystemInterface::handleMouseEvent(window, point, window->mapToGlobal(point.toPoint()),
                                             buttons, Qt::LeftButton, type);
  };
  for (auto _ : state) {
    const long before = screen.clicks;
    send(Qt::LeftButton, QEvent::MouseButtonPress);
    send(Qt::NoButton, QEvent::MouseButtonRelease);
    while (screen.clicks == before) QCoreApplication::processEvents();
  }
}
BENCHMARK(two_events)->Unit(benchmark::kMicrosecond);

platform::Task<void> clicked(session::CallRef call) {
  co_await call->method().handler(call);
}

void session_click(benchmark::State& state) {
  const Screen screen;
  const session::Handle handle =
      session::Elements::sharedInstance().handleOf(qt::viewOfWidget(screen.button));
  const auto held = std::make_shared<session::HeldInput>();
  for (auto _ : state) {
    const long before = screen.clicks;
    finish(clicked(std::make_shared<session::Call>(
        *session::methodNamed("element.click"), session::Json{{"element", handle}},
        session::Call::Owned{held, nullptr},
        [](const std::shared_ptr<session::Result>&, const session::SessionError*) {})));
    if (screen.clicks != before + 1) return state.SkipWithError("the button was not clicked");
  }
}
BENCHMARK(session_click)->Unit(benchmark::kMicrosecond);

const bool kClickRegistered = [] {
  compare({"session_click", "two_events", 2, false, "a click by the session channel",
           "the toolkit's press and release"});
  return true;
}();

}  // namespace
}  // namespace tarni::bench
