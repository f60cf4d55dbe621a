// The same in Qt Quick:  web-quick-sample [ADDRESS]
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlContext>
#if QT_VERSION_MAJOR > 5
#include <QtWebEngineQuick/qtwebenginequickglobal.h>
#else
#include <QtWebEngine/qtwebengineglobal.h>
#endif

#include "samples/web/StartPage.h"

int main(int argc, char** argv) {
  letEngineRunAsRoot();
#if QT_VERSION_MAJOR > 5
  QtWebEngineQuick::initialize();
#else
  QtWebEngine::initialize();
#endif
  const QGuiApplication application(argc, argv);
  QQmlApplicationEngine engine;
  engine.rootContext()->setContextProperty(QStringLiteral("startPage"), startPage());
  engine.load(QUrl(QStringLiteral("qrc:/shop.qml")));
  return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
