// A program that is not an easy host: it blocks, ends and deletes when touched, changes while it is
// looked at, and with an argument keeps events to itself ("--swallow" in its application object,
// "--filter" in a filter).
#include <QtCore/QAbstractListModel>
#include <QtCore/QStringList>
#include <QtCore/QThread>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>
#include <cstdlib>
#include <functional>
#include <utility>

namespace {

bool isInput(const QEvent& event) {
  switch (event.type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
      return true;
    default:
      return false;
  }
}

class Application : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    return (swallows && isInput(*event)) || QApplication::notify(receiver, event);
  }
  bool swallows = false;
};

class Filter : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* const widget = qobject_cast<QWidget*>(watched);
    return widget && widget->objectName() == QLatin1String("kept") && isInput(*event);
  }
};

// Does something, once, when somebody reads it.
class Model : public QAbstractListModel {
 public:
  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (role != Qt::DisplayRole) return {};
    if (const auto surprise = std::exchange(surprise_, nullptr)) surprise();
    return rows_[index.row()];
  }
  void onNextReading(std::function<void()> surprise) { surprise_ = std::move(surprise); }

 private:
  QStringList rows_{"One", "Two", "Three"};
  mutable std::function<void()> surprise_;
};

}  // namespace

int main(int argc, char** argv) {
  Application application(argc, argv);
  Filter filter;
  application.swallows = application.arguments().contains("--swallow");
  if (application.arguments().contains("--filter")) application.installEventFilter(&filter);

  QWidget window;
  QVBoxLayout layout(&window);
  QLabel state("Ready");
  layout.addWidget(&state);
  Model model;
  QListView list;
  list.setModel(&model);
  layout.addWidget(&list);
  auto* const doomed = new QWidget;
  auto* const inside = new QVBoxLayout(doomed);
  for (int i = 0; i < 20; ++i) inside->addWidget(new QLabel("Doomed"));

  const auto addButton = [&](const char* title) {
    auto* const button = new QPushButton(title);
    button->setObjectName(QString(title).toLower());
    layout.addWidget(button);
    return button;
  };
  const auto onPress = [](QPushButton* button, std::function<void()> action) {
    QObject::connect(button, &QPushButton::pressed, button, std::move(action));
  };
  onPress(addButton("Block"), [&] {
    QThread::sleep(3);
    state.setText("Blocked");
  });
  onPress(addButton("End"), [] { std::exit(7); });
  auto* const gone = addButton("Vanish");
  onPress(gone, [&, gone] {
    state.setText("Vanished");
    delete gone;
  });
  onPress(addButton("Trap"), [&] {
    model.onNextReading([&, doomed] {
      delete doomed;
      state.setText("Trapped");
    });
  });
  onPress(addButton("Kept"), [&] { state.setText("Pressed"); });
  layout.addWidget(doomed);
  window.show();
  return QApplication::exec();
}
