#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QPushButton button("Installed");
  button.show();
  return QApplication::exec();
}
