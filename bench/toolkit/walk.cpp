// The walk of the polling hook over windows of the toolkit that did not change, against the
// toolkit's own walk of the same tree: what every child is, where it is and whether it is shown.
#include <benchmark/benchmark.h>

#include <QtCore/QAbstractTableModel>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <vector>

#include "agent/elements/UIViewsManager.h"
#include "backends/qt/views/ViewRegistry.h"
#include "bench/RatioReporter.h"

namespace tarni::bench {
namespace {

// Walks of a tree that is known already.
void measure(benchmark::State& state, const platform::UIViewRef& root, std::size_t atLeast) {
  UIViewsManager manager;
  const std::size_t seen = manager.GetAllViews(root, true).size();
  for (auto _ : state) manager.goThroughAllViews(root);
  if (seen < atLeast) state.SkipWithError("the walk missed views");
  state.counters["views"] = static_cast<double>(seen);
}

void measureBare(benchmark::State& state, const std::function<std::size_t()>& bareWalk) {
  std::size_t seen = bareWalk();
  for (auto _ : state) benchmark::DoNotOptimize(seen = bareWalk());
  state.counters["views"] = static_cast<double>(seen);
}

template <typename Window>
Window& shown(Window& window) {
  window.resize(1000, 800);
  window.show();
  for (int i = 0; i < 10; ++i) QCoreApplication::processEvents();
  return window;
}

// ---------------------------------------------------------------------------------------- widgets

QWidget& formWindow() {
  static QWidget& window = [&]() -> QWidget& {
    auto* const made = new QWidget;
    auto* const grid = new QGridLayout(made);
    for (int i = 0; i < 300; ++i) {
      QWidget* const child = i % 3 == 0   ? static_cast<QWidget*>(new QLabel("Label"))
                             : i % 3 == 1 ? static_cast<QWidget*>(new QLineEdit)
                                          : new QPushButton("Button");
      grid->addWidget(child, i / 15, i % 15);
    }
    return shown(*made);
  }();
  return window;
}

std::size_t bareWalk(const QWidget& root) {
  std::vector<const QWidget*> waiting{&root};
  std::size_t seen = 0;
  while (!waiting.empty()) {
    const QWidget* const widget = waiting.back();
    waiting.pop_back();
    for (const QObject* const child : widget->children()) {
      if (!child->isWidgetType()) continue;
      const auto* const inner = static_cast<const QWidget*>(child);
      if (inner->isHidden()) continue;
      benchmark::DoNotOptimize(inner->metaObject()->className());
      benchmark::DoNotOptimize(inner->geometry());
      ++seen;
      waiting.push_back(inner);
    }
  }
  return seen;
}

void walk_form(benchmark::State& state) {
  measure(state, qt::viewOfWidget(&formWindow()), 300);
}
void bare_walk_form(benchmark::State& state) {
  measureBare(state, [] { return bareWalk(formWindow()); });
}
BENCHMARK(bare_walk_form)->Unit(benchmark::kMicrosecond);
BENCHMARK(walk_form)->Unit(benchmark::kMicrosecond);

// ----------------------------------------------------------------------------------------- tables

class Rows : public QAbstractTableModel {
 public:
  explicit Rows(int count) : count_(count) {}
  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : count_; }
  int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : 4; }
  QVariant data(const QModelIndex& index, int role) const override {
    return role == Qt::DisplayRole ? QVariant(index.row()) : QVariant();
  }

 private:
  const int count_;
};

QTableView& table(int rows) {
  auto* const made = new QTableView;
  made->setModel(new Rows(rows));
  shown(*made).scrollTo(made->model()->index(rows / 2, 0));
  QCoreApplication::processEvents();
  return *made;
}

std::size_t bareWalk(const QTableView& view) {
  std::size_t seen = 0;
  const int columns = view.model()->columnCount();
  for (int row = view.rowAt(0); row >= 0 && row <= view.rowAt(view.viewport()->height() - 1);
       ++row) {
    for (int column = 0; column < columns; ++column) {
      benchmark::DoNotOptimize(view.visualRect(view.model()->index(row, column)));
      ++seen;
    }
  }
  return seen + bareWalk(static_cast<const QWidget&>(view));
}

QTableView& tableOf(long rows) {
  static QTableView& small = table(1000);
  static QTableView& large = table(1'000'000);
  return rows > 1000 ? large : small;
}

void walk_table(benchmark::State& state) {
  measure(state, qt::viewOfWidget(&tableOf(state.range(0))), 80);
}
void bare_walk_table(benchmark::State& state) {
  measureBare(state, [&] { return bareWalk(tableOf(state.range(0))); });
}
BENCHMARK(bare_walk_table)->Arg(1000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(walk_table)->Arg(1000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

// ------------------------------------------------------------------------------------------ Quick

// As many delegates as asked for, all of them in view.
QQuickWindow& listWindow(long delegates) {
  static std::map<long, QQuickWindow*> known;
  QQuickWindow*& window = known[delegates];
  if (window) return *window;
  static auto* const engine = new QQmlEngine;
  QQmlComponent component(engine);
  component.setData(
      "import QtQuick 2.15\nimport QtQuick.Window 2.15\n"
      "Window { width: 1000; height: 800\n"
      "  ListView { anchors.fill: parent; model: " +
          QByteArray::number(qlonglong(delegates)) +
          "\n    delegate: Rectangle { width: 1000; height: 800 / ListView.view.count } } }",
      QUrl("file:///application/list.qml"));
  window = qobject_cast<QQuickWindow*>(component.create());
  return shown(*window);
}

std::size_t bareWalk(QQuickWindow& window) {
  std::vector<const QQuickItem*> waiting{window.contentItem()};
  std::size_t seen = 0;
  while (!waiting.empty()) {
    const QQuickItem* const item = waiting.back();
    waiting.pop_back();
    for (const QQuickItem* const child : item->childItems()) {
      if (!child->isVisible()) continue;
      benchmark::DoNotOptimize(child->metaObject()->className());
      benchmark::DoNotOptimize(QRectF(child->position(), child->size()));
      ++seen;
      waiting.push_back(child);
    }
  }
  return seen;
}

void walk_list(benchmark::State& state) {
  measure(state, qt::viewOfWindow(&listWindow(state.range(0))),
          static_cast<std::size_t>(state.range(0)));
}
void bare_walk_list(benchmark::State& state) {
  measureBare(state, [&] { return bareWalk(listWindow(state.range(0))); });
}
BENCHMARK(bare_walk_list)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(walk_list)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMicrosecond);

const bool kWalkRegistered = [] {
  const std::string own = "the toolkit's own walk of it";
  compare({"walk_form", "bare_walk_form", 3, false, "the poll's walk over a form", own});
  compare({"walk_table/1000000", "bare_walk_table/1000000", 3, false,
           "the poll's walk over a table of a million rows", own});
  compare({"walk_table/1000000", "walk_table/1000", 1.2, false,
           "the poll's walk over a table of a million rows", "over one of a thousand rows"});
  compare({"walk_list/10000", "bare_walk_list/10000", 3, false,
           "the poll's walk over a QML list of 10,000 delegates", own});
  compare({"walk_list/10000", "walk_list/1000", 12, false,
           "the poll's walk over a QML list of 10,000 delegates", "over one of a thousand"});
  return true;
}();

}  // namespace
}  // namespace tarni::bench
