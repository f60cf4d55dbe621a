// A program with a web page between native controls, which a person uses like one thing: web-sample
// [ADDRESS]
#include <QtWebEngineWidgets/QWebEngineView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include "samples/web/StartPage.h"

namespace {

class Shop : public QWidget {
 public:
  Shop() {
    setWindowTitle(QStringLiteral("Tarni Web Sample"));
    resize(760, 620);
    auto* const number = new QLineEdit;
    number->setPlaceholderText(QStringLiteral("Order number"));
    auto* const urgent = new QCheckBox(QStringLiteral("Urgent"));
    auto* const page = new QWebEngineView;
    page->load(startPage());
    auto* const status = new QLabel(QStringLiteral("Open"));
    auto* const close = new QPushButton(QStringLiteral("Close order"));

    auto* const top = new QHBoxLayout;
    top->addWidget(number);
    top->addWidget(urgent);
    auto* const bottom = new QHBoxLayout;
    bottom->addWidget(status);
    bottom->addStretch();
    bottom->addWidget(close);
    auto* const all = new QVBoxLayout(this);
    all->addLayout(top);
    all->addWidget(page, 1);
    all->addLayout(bottom);

    connect(close, &QPushButton::clicked, this, [=] {
      const QString kind = urgent->isChecked() ? QStringLiteral(", urgent") : QString();
      status->setText(QStringLiteral("Closed: ") + number->text() + kind);
    });
  }
};

}  // namespace

int main(int argc, char** argv) {
  letEngineRunAsRoot();
  QApplication application(argc, argv);
  Shop shop;
  shop.show();
  return QApplication::exec();
}
