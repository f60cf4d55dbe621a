// A small widget program to test and to show the agent with. It knows nothing of the agent.

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

constexpr int kRows = 20;

template <typename Widget>
Widget* named(const char* name, Widget* widget) {
  widget->setObjectName(QString::fromLatin1(name));
  return widget;
}

class SampleWindow : public QMainWindow {
 public:
  SampleWindow() {
    setWindowTitle("Tarni Sample");
    addMenus();
    addToolBar("Tools")->addAction("Refresh", this, [this] { status_->setText("Refreshed"); });
    setCentralWidget(makePage());
    resize(420, 440);
  }

 private:
  void addMenus() {
    QMenu* const file = menuBar()->addMenu("&File");
    file->addAction("&About", this, [this] { status_->setText("About"); });
    file->addSeparator();
    file->addAction("&Quit", this, &QWidget::close);
  }

  QWidget* makePage() {
    auto* const page = named("page", new QWidget);
    auto* const layout = new QVBoxLayout(page);
    password_->setEchoMode(QLineEdit::Password);
    username_->setPlaceholderText("User name");
    password_->setPlaceholderText("Password");
    for (int row = 1; row <= kRows; ++row) list_->addItem(QString("Row %1").arg(row));
    auto* const login = named("login", new QPushButton("&Log in"));
    auto* const details = named("details", new QPushButton(QString::fromUtf8("&Details…")));
    connect(login, &QPushButton::clicked, this,
            [this] { welcome_->setText("Hello, " + username_->text()); });
    connect(details, &QPushButton::clicked, this, [this] { showDetails(); });
    connect(list_, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { status_->setText(item->text()); });
    for (QWidget* widget : std::initializer_list<QWidget*>{
             welcome_, username_, password_, remember_, list_, login, details, status_}) {
      layout->addWidget(widget);
    }
    return page;
  }

  // A nested event loop, as many programs run one for a question.
  void showDetails() {
    QDialog dialog(this);
    dialog.setObjectName("question");
    dialog.setWindowTitle("Details");
    auto* const layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel("Really?"));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    // Not the desktop's words for them, which differ.
    buttons->button(QDialogButtonBox::Ok)->setText("OK");
    buttons->button(QDialogButtonBox::Cancel)->setText("Cancel");
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addWidget(buttons);
    status_->setText(dialog.exec() == QDialog::Accepted ? "Accepted" : "Rejected");
  }

  QLabel* const welcome_ = named("welcome", new QLabel("Welcome"));
  QLineEdit* const username_ = named("username", new QLineEdit);
  QLineEdit* const password_ = named("password", new QLineEdit);
  QCheckBox* const remember_ = named("remember", new QCheckBox("&Remember me"));
  QListWidget* const list_ = named("list", new QListWidget);
  QLabel* const status_ = named("status", new QLabel);
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  SampleWindow window;
  window.show();
  return QApplication::exec();
}
