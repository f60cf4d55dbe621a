#include <QtCore/QUrl>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

extern "C" [[gnu::visibility("default")]] void openQuickWindow() {
  auto* const engine = new QQmlEngine;
  QQmlComponent component(engine);
  component.setData(
      "import QtQuick 2.15\nimport QtQuick.Window 2.15\n"
      "Window { visible: true; width: 100; height: 50; Text { text: \"Late\" } }",
      QUrl());
  component.create()->setParent(engine);
}
