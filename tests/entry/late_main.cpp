// A program of widgets that comes to use Qt Quick when a button is clicked, by a library that it
// loads then.
#include <QtCore/QLibrary>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QWidget>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QWidget window;
  const QPushButton button("Open", &window);
  QObject::connect(&button, &QPushButton::clicked, [argv] {
    const auto open = QLibrary::resolve(QString::fromLocal8Bit(argv[1]), "openQuickWindow");
    if (open) open();
  });
  window.show();
  return QApplication::exec();
}
