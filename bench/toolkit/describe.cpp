// Screens of the toolkit's widgets and of Qt Quick's items, to be described.
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGraphicsItem>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <memory>

#include "backends/qt/views/ViewRegistry.h"
#include "bench/Describing.h"
#include "bench/toolkit/Loop.h"

namespace tarni::bench {
namespace {

constexpr platform::CGSize kWindow{1000, 800};

// ---------------------------------------------------------------------------------------- widgets

QWidget* makeWidget(QWidget* parent, long number) {
  const QString text = QString::number(number);
  if (number % 4 == 0) return new QPushButton("Button " + text, parent);
  if (number % 4 == 1) return new QLabel("Label " + text, parent);
  return new QWidget(parent);
}

// Windows end with the next one, never after the application.
platform::UIWindowRef showWidgets(Shape shape, long count) {
  static auto& window = *new std::unique_ptr<QWidget>;
  window = std::make_unique<QWidget>();
  window->resize(static_cast<int>(kWindow.width), static_cast<int>(kWindow.height));
  std::vector<QWidget*> views{window.get()};
  for (long number = 0; number < count; ++number) {
    QWidget* const widget = makeWidget(parentOf(shape, number, views), number);
    const platform::CGRect rect = placeOf(shape, number, count, kWindow);
    widget->setGeometry(
        QRectF(rect.minX(), rect.minY(), rect.size.width, rect.size.height).toRect());
    views.push_back(widget);
  }
  window->show();
  window->activateWindow();
  letItShow([] { return window->isActiveWindow(); });
  return qt::viewOfWidget(window.get());
}

// --------------------------------------------------------------------------------- graphics items

platform::UIWindowRef showGraphics(Shape shape, long count) {
  static auto& window = *new std::unique_ptr<QWidget>;
  window = std::make_unique<QWidget>();
  window->resize(static_cast<int>(kWindow.width), static_cast<int>(kWindow.height));
  auto* const scene = new QGraphicsScene(0, 0, kWindow.width, kWindow.height, window.get());
  auto* const view = new QGraphicsView(scene, window.get());
  view->setFrameShape(QFrame::NoFrame);
  view->resize(window->size());
  std::vector<QGraphicsItem*> views{nullptr};
  for (long number = 0; number < count; ++number) {
    const platform::CGRect rect = placeOf(shape, number, count, kWindow);
    auto* const item = new QGraphicsRectItem(0, 0, rect.size.width, rect.size.height);
    QGraphicsItem* const parent = parentOf(shape, number, views);
    parent ? item->setParentItem(parent) : scene->addItem(item);
    item->setPos(rect.minX(), rect.minY());
    item->setFlag(QGraphicsItem::ItemIsSelectable, number % 4 == 0);
    item->setToolTip((number % 4 == 0 ? "Button " : "Label ") + QString::number(number));
    views.push_back(item);
  }
  window->show();
  window->activateWindow();
  letItShow([] { return window->isActiveWindow(); });
  return qt::viewOfWidget(window.get());
}

// ------------------------------------------------------------------------------------------ Quick

const char* const kItems[] = {
    "import QtQuick.Controls 2.15\nButton { property int number: 0; text: 'Button ' + number }",
    "import QtQuick 2.15\nText { property int number: 0; text: 'Label ' + number }",
    "import QtQuick 2.15\nRectangle { property int number: 0; color: 'lightgrey' }"};

QQuickItem* makeItem(QQmlEngine& engine, QQuickItem* parent, long number) {
  static auto* const components = [&engine] {
    auto* const made = new std::vector<std::unique_ptr<QQmlComponent>>;
    for (const char* const text : kItems) {
      made->push_back(std::make_unique<QQmlComponent>(&engine));
      made->back()->setData(text, QUrl("file:///application/item.qml"));
    }
    return made;
  }();
  const auto kind = static_cast<std::size_t>(std::min(number % 4, 2L));
  auto* const item = qobject_cast<QQuickItem*>((*components)[kind]->create());
  item->setProperty("number", static_cast<int>(number));
  item->setParentItem(parent);
  item->setParent(parent);
  return item;
}

platform::UIWindowRef showItems(Shape shape, long count) {
  static auto* const engine = new QQmlEngine;
  static auto& window = *new std::unique_ptr<QQuickWindow>;
  window = std::make_unique<QQuickWindow>();
  window->resize(static_cast<int>(kWindow.width), static_cast<int>(kWindow.height));
  std::vector<QQuickItem*> views{window->contentItem()};
  for (long number = 0; number < count; ++number) {
    QQuickItem* const item = makeItem(*engine, parentOf(shape, number, views), number);
    const platform::CGRect rect = placeOf(shape, number, count, kWindow);
    item->setPosition({rect.minX(), rect.minY()});
    item->setSize({rect.size.width, rect.size.height});
    views.push_back(item);
  }
  window->show();
  window->requestActivate();
  letItShow([] { return window->isActive() && window->isExposed(); });
  return qt::viewOfWindow(window.get());
}

// A tenth of a tree's views lie over each point, and the toolkit goes through all of a scene's
// there. The software renderer of Quick takes the square of the items that lie side by side.
const bool kDescribeRegistered = [] {
  measureDescribing({"widgets",
                     showWidgets,
                     finish,
                     {{Shape::Flat, {1000, 10'000, 100'000}},
                      {Shape::Tree, {1000, 10'000, 100'000}},
                      {Shape::Chain, {300}}}});
  measureDescribing({"graphics",
                     showGraphics,
                     finish,
                     {{Shape::Flat, {1000, 10'000, 100'000}}, {Shape::Tree, {1000}}},
                     "UIControl"});
  measureDescribing(
      {"quick",
       showItems,
       finish,
       {{Shape::Flat, {1000, 10'000}}, {Shape::Tree, {1000, 10'000}}, {Shape::Chain, {1000}}}});
  return true;
}();

}  // namespace
}  // namespace tarni::bench
