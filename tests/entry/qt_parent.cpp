// Runs the shell command it is given from a running event loop, and ends. With WITHOUT_WINDOWS in
// its environment it is a program of QtCore alone, though it has the libraries for windows.
#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <cstdlib>
#include <memory>

int main(int argc, char** argv) {
  const bool isWithoutWindows = qEnvironmentVariableIsSet("WITHOUT_WINDOWS");
  const std::unique_ptr<QCoreApplication> application(
      isWithoutWindows ? new QCoreApplication(argc, argv) : new QGuiApplication(argc, argv));
  QTimer::singleShot(0, [argv] { QCoreApplication::exit(std::system(argv[1])); });
  return QCoreApplication::exec();
}
