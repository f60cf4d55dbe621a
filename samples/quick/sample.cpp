// A small program of Qt Quick Controls to test and to show the agent with. It knows nothing of the
// agent.

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  QQmlApplicationEngine engine(QStringLiteral("qrc:/main.qml"));
  return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
