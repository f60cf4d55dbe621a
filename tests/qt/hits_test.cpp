// What is recorded is what the toolkit itself says that the person hit: for random points in random
// layouts of standard widgets. TARNI_SEED repeats a run.
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>
#include <cstdlib>
#include <random>

#include "agent/recording/RecorderAction.h"
#include "tests/support/QtScreen.h"

namespace tarni::test {
namespace {

using platform::UIViewRef;

class RandomLayout {
 public:
  explicit RandomLayout(unsigned seed) : random_(seed) {}

  bool oneIn(int count) { return number(count) == 0; }
  int number(int end) { return std::uniform_int_distribution<>(0, end - 1)(random_); }

  QWidget* widget(int depth) {
    QWidget* const made = depth > 0 ? container(depth - 1) : leaf();
    if (oneIn(6)) made->hide();
    return made;
  }

 private:
  QWidget* container(int depth) {
    switch (number(6)) {
      case 0:
        return paged(new QTabWidget, depth,
                     [](auto* tabs, QWidget* page) { tabs->addTab(page, "Page"); });
      case 1:
        return paged(new QStackedWidget, depth,
                     [](auto* stack, QWidget* page) { stack->addWidget(page); });
      case 2: {
        auto* const splitter = new QSplitter(oneIn(2) ? Qt::Horizontal : Qt::Vertical);
        for (int i = 2 + number(2); i > 0; --i) splitter->addWidget(widget(depth));
        return splitter;
      }
      case 3: {
        auto* const area = new QScrollArea;
        area->setWidget(box(new QWidget, depth));
        area->widget()->resize(100 + number(500), 100 + number(900));
        return scrolled(area);
      }
      case 4:
        return box(new QGroupBox("Group"), depth);
      default:
        return box(new QWidget, depth);
    }
  }

  // Now one page is open, now another, so that some that are hidden were laid out.
  template <typename Pages, typename Add>
  QWidget* paged(Pages* pages, int depth, Add add) {
    for (int i = 2 + number(2); i > 0; --i) add(pages, box(new QWidget, depth));
    turned_.push_back([pages, to = number(pages->count())] { pages->setCurrentIndex(to); });
    return pages;
  }

  QWidget* box(QWidget* in, int depth) {
    auto* const layout =
        new QBoxLayout(oneIn(2) ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, in);
    for (int i = 1 + number(3); i > 0; --i) layout->addWidget(widget(depth));
    // A panel over what is there, as an editor's for searching.
    if (oneIn(4)) {
      QWidget* const panel = new QLabel("Panel", in);
      panel->setGeometry(number(60), number(60), 120, 30);
      panel->setVisible(oneIn(2));
      panel->setAutoFillBackground(true);
      panel->setAttribute(Qt::WA_TransparentForMouseEvents, oneIn(2));
    }
    return in;
  }

  QWidget* leaf() {
    const std::function<QWidget*()> kinds[] = {
        [] { return new QPushButton("Button"); },
        [] { return new QCheckBox("Check"); },
        [] { return new QLabel("Label"); },
        [] { return new QLineEdit("Field"); },
        [] { return new QSpinBox; },
        [] { return new QSlider(Qt::Horizontal); },
        [] { return new QProgressBar; },
        [this] { return scrolled(new QPlainTextEdit(QString("line\n").repeated(40))); },
        [this] { return table(); },
        [this] { return tree(); },
        [] { return new QTabBar; }};
    return kinds[number(std::size(kinds))]();
  }

  QWidget* table() {
    auto* const table = new QTableWidget(20, 6);
    table->horizontalHeader()->setVisible(oneIn(2));
    table->verticalHeader()->setVisible(oneIn(2));
    return scrolled(table);
  }

  QWidget* tree() {
    auto* const tree = new QTreeWidget;
    tree->setColumnCount(2);
    for (int i = 0; i < 10; ++i) {
      auto* const item = new QTreeWidgetItem(tree, {"Node", "Value"});
      new QTreeWidgetItem(item, {"Leaf", "Value"});
      item->setExpanded(oneIn(2));
      if (oneIn(3)) item->setCheckState(0, Qt::Checked);
    }
    tree->header()->setVisible(oneIn(2));
    return scrolled(tree);
  }

  QWidget* scrolled(QAbstractScrollArea* area) {
    turned_.push_back([area, across = number(100), down = number(100)] {
      QScrollBar& x = *area->horizontalScrollBar();
      QScrollBar& y = *area->verticalScrollBar();
      x.setValue(x.maximum() * across / 100);
      y.setValue(y.maximum() * down / 100);
    });
    return area;
  }

 public:
  // Once all is shown.
  void turn() {
    for (const auto& act : turned_) act();
  }

 private:
  std::mt19937 random_;
  std::vector<std::function<void()>> turned_;
};

// What the toolkit says is at a point of the window.
struct Hit {
  QWidget* widget;
  QModelIndex index;          // of an item view's item
  bool isInBranches = false;  // beside the row of a tree, where it opens and closes
};

Hit hitOf(QWidget& window, QPoint point) {
  QWidget* const widget = window.childAt(point);
  if (!widget) return {&window, {}};
  QWidget* const area = qt::scrollAreaOfViewport(widget);
  auto* const items = qobject_cast<QAbstractItemView*>(area);
  const bool hasItems = items && !qobject_cast<QHeaderView*>(area);
  if (!hasItems) return {area ? area : widget, {}};
  const QPoint inside = widget->mapFrom(&window, point);
  const QModelIndex index = items->indexAt(inside);
  return {area, index, index.isValid() && !items->visualRect(index).contains(inside)};
}

std::string nameOf(const UIViewRef& view) {
  std::string name;
  for (UIViewRef at = view; at; at = at->superview()) {
    name = "\\" + at->getClass()->name() + name;
  }
  return name;
}

// The text of the row that the view is, if it is one: what tells it from its neighbours.
bool isOf(const UIViewRef& view, const Hit& hit) {
  if (qt::widgetOfView(view) != hit.widget) return false;
  const bool isItem = view != qt::viewOfWidget(hit.widget);
  if (!qobject_cast<QAbstractItemView*>(hit.widget) || qobject_cast<QHeaderView*>(hit.widget)) {
    return true;
  }
  if (hit.isInBranches) return true;
  if (!hit.index.isValid()) return !isItem;
  const platform::CGRect place = view->bounds();
  const platform::CGPoint middle =
      view->convertPointToWindow({place.size.width / 2, place.size.height / 2});
  const auto* const items = static_cast<QAbstractItemView*>(hit.widget);
  const QPoint at = items->viewport()->mapFrom(items->window(), QPoint(middle.x, middle.y));
  return isItem && items->indexAt(at) == hit.index;
}

TEST(Hits, AreRecordedAsTheToolkitTellsThem) {
  const char* const given = std::getenv("TARNI_SEED");
  const unsigned seed = given ? std::strtoul(given, nullptr, 10) : std::random_device()();
  int points = 0;
  int wrong = 0;
  for (unsigned page = 0; page < 12 && wrong == 0; ++page) {
    RandomLayout layout(seed + page);
    QMainWindow window;
    if (layout.oneIn(2)) window.menuBar()->addMenu("File")->addAction("Open");
    QWidget* const central = layout.widget(3);
    central->show();
    window.setCentralWidget(central);
    window.resize(300 + layout.number(500), 200 + layout.number(500));
    show(window);
    layout.turn();
    QCoreApplication::processEvents();
    const UIViewRef root = qt::viewOfWidget(&window);
    for (int i = 0; i < 100; ++i, ++points) {
      const QPoint at(layout.number(window.width()), layout.number(window.height()));
      const platform::CGPoint point{at.x() + 0.5, at.y() + 0.5};
      const UIViewRef touched = root->hitTest(point);
      const StepDraftRef step = RecorderAction().describeStep(
          {"Click", touched, "", platform::convertPoint(point, root, touched)});
      const UIViewRef recorded = step->recordedView.lock();
      if (isOf(recorded, hitOf(window, at))) continue;
      ++wrong;
      ADD_FAILURE() << "TARNI_SEED=" << seed + page << " at (" << at.x() << ", " << at.y()
                    << "): recorded " << nameOf(recorded) << ", touched " << nameOf(touched)
                    << ", hit " << nameOf(qt::viewOfWidget(hitOf(window, at).widget));
    }
  }
  std::printf("%d points, TARNI_SEED=%u\n", points, seed);
}

}  // namespace
}  // namespace tarni::test
