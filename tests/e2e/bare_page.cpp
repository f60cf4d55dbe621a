// A program that is nothing but a web view:  bare-page FILE
#include <QtWebEngineWidgets/QWebEngineView>
#include <QtWidgets/QApplication>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QWebEngineView view;
  view.resize(738, 540);
  view.load(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[argc - 1])));
  view.show();
  return QApplication::exec();
}
