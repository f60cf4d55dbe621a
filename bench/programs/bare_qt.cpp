// A Qt program that does nothing but start, show a window and end: what start-up costs by itself.
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QPushButton button("Bare");
  button.show();
  QTimer::singleShot(0, &application, &QCoreApplication::quit);
  return QApplication::exec();
}
