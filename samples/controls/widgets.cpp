// Every standard control of widgets on one page. It knows nothing of the agent. What becomes of a
// control is a line on the standard output, "colour=Blue", and in the status line.

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QGraphicsEllipseItem>
#include <QGraphicsScene>
#include <QGraphicsTextItem>
#include <QGraphicsView>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMap>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <cstdio>

namespace {

constexpr int kRows = 30;

template <typename Widget>
Widget* named(const char* name, Widget* widget) {
  widget->setObjectName(QString::fromLatin1(name));
  return widget;
}

class ControlsWindow : public QMainWindow {
 public:
  ControlsWindow() {
    setWindowTitle("Tarni Controls");
    addMenus();
    addTools();
    auto* const page = new QWidget;
    auto* const columns = new QHBoxLayout(page);
    columns->addWidget(makeFields(), 3);
    columns->addWidget(makeChoices(), 2);
    columns->addWidget(makeCollections(), 4);
    setCentralWidget(page);
    statusBar()->addWidget(named("status", status_));
    resize(1000, 640);
  }

 private:
  // The name is the control's.
  void tell(const QString& control, const QString& state) {
    QString line = control + '=' + state;
    line.replace('\n', "\\n");
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
    status_->setText(line);
  }
  void tell(const QObject* control, const QString& state) { tell(control->objectName(), state); }

  void count(const QObject* control) {
    const QString name = control->objectName();
    tell(name, QString::number(++counts_[name]));
  }

  void addEntries(QMenu* menu, const QString& control, const QStringList& entries) {
    for (const QString& entry : entries) {
      menu->addAction(entry, this, [this, control, entry] { tell(control, entry); });
    }
  }

  void tellOpening(const QMenu* menu, const QString& control) {
    connect(menu, &QMenu::aboutToShow, this, [this, control] { tell(control, "open"); });
    connect(menu, &QMenu::aboutToHide, this, [this, control] { tell(control, "closed"); });
  }

  void addMenus() {
    QMenu* const file = menuBar()->addMenu("&File");
    tellOpening(file, "fileMenu");
    addEntries(file, "menu", {"New"});
    QMenu* const sub = file->addMenu("Sub");
    addEntries(sub, "menu", {"Deep"});
    addEntries(sub->addMenu("Further"), "menu", {"Deeper"});
    file->addSeparator();
    file->addAction("Quit", this, &QWidget::close);
    QMenu* const view = menuBar()->addMenu("&View");
    auto* const grid = view->addAction("Grid");
    grid->setCheckable(true);
    connect(grid, &QAction::toggled, this, [this](bool on) { tell("grid", on ? "on" : "off"); });
    addEntries(menuBar()->addMenu("&Help"), "menu", {"About"});
  }

  void addTools() {
    QToolBar* const tools = addToolBar("Tools");
    tools->addAction("Refresh", this, [this] { tell("tool", "Refresh"); });
    auto* const run = named("run", new QToolButton);
    run->setText("Run");
    run->setPopupMode(QToolButton::MenuButtonPopup);
    auto* const ways = new QMenu(run);
    addEntries(ways, "run", {"Debug", "Profile"});
    run->setMenu(ways);
    connect(run, &QToolButton::clicked, this, [this] { tell("run", "Run"); });
    tools->addWidget(run);
    auto* const style = named("style", new QToolButton);
    style->setText("Style");
    style->setPopupMode(QToolButton::InstantPopup);
    auto* const styles = new QMenu(style);
    addEntries(styles, "style", {"Plain", "Bold"});
    style->setMenu(styles);
    tools->addWidget(style);
  }

  QWidget* makeFields() {
    auto* const box = new QGroupBox("Fields");
    auto* const form = new QFormLayout(box);

    auto* const line = named("line", new QLineEdit);
    connect(line, &QLineEdit::textChanged, this,
            [=, this](const QString& text) { tell(line, text); });
    form->addRow("Line", line);
    auto* const second = named("nextLine", new QLineEdit);
    connect(second, &QLineEdit::textChanged, this,
            [=, this](const QString& t) { tell(second, t); });
    form->addRow("Next line", second);

    auto* const notes = named("notes", new QPlainTextEdit);
    connect(notes, &QPlainTextEdit::textChanged, this,
            [=, this] { tell(notes, notes->toPlainText()); });
    form->addRow("Notes", notes);
    auto* const letter = named("letter", new QTextEdit);
    connect(letter, &QTextEdit::textChanged, this,
            [=, this] { tell(letter, letter->toPlainText()); });
    form->addRow("Letter", letter);

    auto* const colour = named("colour", new QComboBox);
    colour->addItems({"Red", "Green", "Blue", "Violet"});
    auto* const size = named("size", new QComboBox);
    size->setEditable(true);
    size->addItems({"Small", "Medium", "Large"});
    for (QComboBox* const combo : {colour, size}) {
      connect(combo, &QComboBox::currentTextChanged, this,
              [=, this](const QString& text) { tell(combo, text); });
    }
    form->addRow("Colour", colour);
    form->addRow("Size", size);

    auto* const count = named("count", new QSpinBox);
    connect(count, QOverload<int>::of(&QSpinBox::valueChanged), this,
            [=, this](int value) { tell(count, QString::number(value)); });
    form->addRow("Count", count);
    auto* const volume = named("volume", new QSlider(Qt::Horizontal));
    volume->setRange(0, 100);
    connect(volume, &QSlider::valueChanged, this,
            [=, this](int value) { tell(volume, QString::number(value)); });
    form->addRow("Volume", volume);

    auto* const day = named("day", new QDateEdit(QDate(2024, 5, 17)));
    auto* const due = named("due", new QDateEdit(QDate(2024, 5, 17)));
    due->setCalendarPopup(true);
    for (QDateEdit* const date : {day, due}) {
      date->setDisplayFormat("yyyy-MM-dd");
      connect(date, &QDateEdit::dateChanged, this,
              [=, this](const QDate& value) { tell(date, value.toString(Qt::ISODate)); });
    }
    form->addRow("Day", day);
    form->addRow("Due", due);

    auto* const fixed = new QLineEdit("as it is");
    fixed->setReadOnly(true);
    form->addRow("Fixed", fixed);
    auto* const off = new QLineEdit("off");
    off->setEnabled(false);
    form->addRow("Off", off);
    return box;
  }

  QWidget* makeChoices() {
    auto* const box = new QGroupBox("Choices");
    auto* const layout = new QVBoxLayout(box);
    auto* const check = named("check", new QCheckBox("Check"));
    connect(check, &QCheckBox::toggled, this,
            [=, this](bool on) { tell(check, on ? "on" : "off"); });
    layout->addWidget(check);
    for (const char* const text : {"Walk", "Ride", "Drive"}) {
      auto* const radio = named(text, new QRadioButton(text));
      connect(radio, &QRadioButton::toggled, this, [=, this](bool on) {
        if (on) tell("travel", text);
      });
      layout->addWidget(radio);
    }
    auto* const press = named("press", new QPushButton("Press"));
    connect(press, &QPushButton::clicked, this, [=, this] { count(press); });
    layout->addWidget(press);
    auto* const toggle = named("toggle", new QPushButton("Toggle"));
    toggle->setCheckable(true);
    connect(toggle, &QPushButton::toggled, this,
            [=, this](bool on) { tell(toggle, on ? "on" : "off"); });
    layout->addWidget(toggle);

    const auto add = [=, this](const char* name, const char* text, void (ControlsWindow::*open)()) {
      auto* const button = named(name, new QPushButton(text));
      connect(button, &QPushButton::clicked, this, open);
      layout->addWidget(button);
    };
    add("openMessage", "Message…", &ControlsWindow::ask);
    add("openFile", "File…", &ControlsWindow::chooseFile);
    add("openSearch", "Search…", &ControlsWindow::showSearch);
    add("openWindow", "Window…", &ControlsWindow::showSecondWindow);
    layout->addWidget(makeTabs());
    return box;
  }

  // Each page has a button that stands where those of the other pages do.
  QWidget* makeTabs() {
    auto* const tabs = named("tabs", new QTabWidget);
    for (const char* const title : {"One", "Two", "Three"}) {
      auto* const page = new QWidget;
      auto* const layout = new QVBoxLayout(page);
      layout->addWidget(new QLabel(QString("Page %1").arg(title)));
      auto* const button = named(title, new QPushButton("On page"));
      connect(button, &QPushButton::clicked, this, [=, this] { tell("page", title); });
      layout->addWidget(button);
      tabs->addTab(page, title);
    }
    connect(tabs, &QTabWidget::currentChanged, this,
            [=, this](int index) { tell(tabs, tabs->tabText(index)); });
    return tabs;
  }

  QWidget* makeCollections() {
    auto* const box = new QGroupBox("Collections");
    auto* const layout = new QVBoxLayout(box);
    auto* const splitter = named("splitter", new QSplitter);
    splitter->addWidget(makeList());
    splitter->addWidget(makeTree());
    connect(splitter, &QSplitter::splitterMoved, this,
            [=, this](int position) { tell(splitter, QString::number(position)); });
    layout->addWidget(splitter, 3);
    layout->addWidget(makeTable(), 3);
    layout->addWidget(makeScene(), 2);
    return box;
  }

  QWidget* makeList() {
    auto* const list = named("list", new QListWidget);
    for (int row = 1; row <= kRows; ++row) list->addItem(QString("Row %1").arg(row));
    connect(list, &QListWidget::currentTextChanged, this,
            [=, this](const QString& text) { tell(list, text); });
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    auto* const menu = new QMenu(list);
    addEntries(menu, "context", {"Rename", "Remove"});
    connect(list, &QWidget::customContextMenuRequested, this,
            [=](const QPoint& at) { menu->popup(list->viewport()->mapToGlobal(at)); });
    return list;
  }

  QWidget* makeTree() {
    auto* const tree = named("tree", new QTreeWidget);
    tree->setHeaderLabel("Plants");
    for (const QStringList& branch :
         {QStringList{"Trees", "Oak", "Beech"}, QStringList{"Herbs", "Mint", "Thyme"}}) {
      auto* const top = new QTreeWidgetItem(tree, {branch.front()});
      for (const QString& leaf : branch.mid(1)) new QTreeWidgetItem(top, {leaf});
    }
    connect(tree, &QTreeWidget::currentItemChanged, this,
            [=, this](const QTreeWidgetItem* item) { tell(tree, item->text(0)); });
    connect(tree, &QTreeWidget::itemExpanded, this,
            [=, this](const QTreeWidgetItem* item) { tell(item->text(0), "open"); });
    connect(tree, &QTreeWidget::itemCollapsed, this,
            [=, this](const QTreeWidgetItem* item) { tell(item->text(0), "closed"); });
    return tree;
  }

  QWidget* makeTable() {
    auto* const table = named("table", new QTableWidget(4, 3));
    table->setHorizontalHeaderLabels({"A", "B", "C"});
    const auto place = [](int row, int column) {
      return QChar('A' + column) + QString::number(row + 1);
    };
    for (int row = 0; row < table->rowCount(); ++row) {
      for (int column = 0; column < table->columnCount(); ++column) {
        table->setItem(row, column, new QTableWidgetItem(place(row, column).toLower()));
      }
    }
    connect(table, &QTableWidget::currentCellChanged, this,
            [=, this](int row, int column) { tell(table, place(row, column)); });
    connect(table, &QTableWidget::cellChanged, this, [=, this](int row, int column) {
      tell(place(row, column), table->item(row, column)->text());
    });
    return table;
  }

  QWidget* makeScene() {
    auto* const scene = new QGraphicsScene(0, 0, 300, 90, this);
    auto* const square = scene->addRect(0, 0, 60, 60, QPen(), QBrush(Qt::darkCyan));
    auto* const circle = scene->addEllipse(0, 0, 60, 60, QPen(), QBrush(Qt::darkYellow));
    auto* const title = named("title", scene->addText("Title"));
    square->setPos(10, 15);
    circle->setPos(110, 15);
    title->setPos(220, 30);
    square->setToolTip("Square");
    circle->setToolTip("Circle");
    title->setToolTip("Title");
    for (auto* const item : scene->items()) item->setFlag(QGraphicsItem::ItemIsSelectable);
    connect(scene, &QGraphicsScene::selectionChanged, this, [=, this] {
      const auto selected = scene->selectedItems();
      tell("scene", selected.isEmpty() ? "nothing" : selected.front()->toolTip());
    });
    return named("scene", new QGraphicsView(scene));
  }

  // A nested event loop, as many programs run one for a question.
  void ask() {
    QMessageBox box(QMessageBox::Question, "Question", "Really?",
                    QMessageBox::Yes | QMessageBox::No, this);
    tell("message", box.exec() == QMessageBox::Yes ? "Yes" : "No");
  }

  void chooseFile() {
    const QString file = QFileDialog::getOpenFileName(this, "Choose", QDir::homePath(), {}, nullptr,
                                                      QFileDialog::DontUseNativeDialog);
    tell("file", QFileInfo(file).fileName());
  }

  // Stands beside its window, which goes on.
  void showSearch() {
    auto* const dialog = named("search", new QDialog(this));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle("Search");
    auto* const words = named("words", new QLineEdit);
    auto* const next = new QPushButton("Next");
    auto* const done = new QPushButton("Done");
    connect(next, &QPushButton::clicked, this, [=, this] { tell("search", words->text()); });
    connect(done, &QPushButton::clicked, dialog, &QDialog::close);
    connect(dialog, &QDialog::finished, this, [this] { tell("searchDialog", "closed"); });
    auto* const layout = new QHBoxLayout(dialog);
    for (QWidget* const part : std::initializer_list<QWidget*>{words, next, done}) {
      layout->addWidget(part);
    }
    dialog->move(x() + 520, y() + height() + 60);
    dialog->show();
    tell("searchDialog", "open");
  }

  void showSecondWindow() {
    auto* const window = named("second", new QWidget);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowTitle("Second Window");
    auto* const again = named("again", new QPushButton("Press here"));
    auto* const done = new QPushButton("Close");
    connect(again, &QPushButton::clicked, this, [=, this] { count(again); });
    connect(done, &QPushButton::clicked, window, &QWidget::close);
    connect(window, &QObject::destroyed, this, [this] { tell("secondWindow", "closed"); });
    auto* const layout = new QHBoxLayout(window);
    layout->addWidget(again);
    layout->addWidget(done);
    window->move(x() + 20, y() + height() + 60);
    window->show();
    tell("secondWindow", "open");
  }

  QLabel* const status_ = new QLabel("Ready");
  QMap<QString, int> counts_;
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  ControlsWindow window;
  window.show();
  return QApplication::exec();
}
