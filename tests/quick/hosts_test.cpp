// Scenes inside windows of widgets.
#include <QtQuick/QQuickView>
#include <QtQuickWidgets/QQuickWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include "backends/qt/drawing/QtImage.h"
#include "tests/quick/QuickScreen.h"

namespace tarni::test {
namespace {

constexpr const char* kScene = R"(import QtQuick 2.15
import QtQuick.Controls 2.15
Rectangle { id: scene; width: 200; height: 100; color: "red"; property int taps
  Rectangle { objectName: "target"; x: 20; y: 30; width: 50; height: 40; color: "blue"
    MouseArea { anchors.fill: parent; onClicked: ++scene.taps } }
  property bool hovered: button.hovered
  AbstractButton { id: button; hoverEnabled: true; x: 100; width: 50; height: 40 } })";

class Hosts : public testing::Test {
 protected:
  // What is the same however the widget shows the scene.
  void expectSceneIn(QWidget& host, QObject& scene) {
    const UIViewRef hostView = qt::viewOfWidget(&host);
    ASSERT_EQ(hostView->subviews().size(), 1U);
    const UIViewRef root = hostView->subviews().front();
    EXPECT_EQ(root->superview(), hostView);
    ASSERT_EQ(root->subviews().size(), 2U);
    const UIViewRef target = root->subviews().front();
    EXPECT_EQ(target->accessibilityIdentifier(), "target");
    EXPECT_EQ(target->window(), qt::viewOfWidget(&window_));
    const QPoint corner = host.mapTo(&window_, QPoint(20, 30));
    EXPECT_EQ(target->convertPointToWindow({0, 0}),
              (CGPoint{double(corner.x()), double(corner.y())}));
    EXPECT_EQ(target->convertPointFromWindow({double(corner.x()), double(corner.y())}), CGPoint());
    const CGPoint middle{corner.x() + 25.0, corner.y() + 20.0};
    EXPECT_EQ(qt::viewOfWidget(&window_)->hitTest(middle), target);
    finish(KIFAdditions::tapAtPoint(target, {25, 20}));
    EXPECT_TRUE(runUntil([&] { return scene.property("taps").toInt() == 1; }));
    finish(KIFAdditions::longPressAtPoint(root->subviews().back(), {25, 20}, 0.2));
    EXPECT_TRUE(runUntil([&] { return !scene.property("hovered").toBool(); }));
    const platform::UIImageRef picture = pictureOf(target);
    ASSERT_TRUE(picture);
    const QImage image = std::dynamic_pointer_cast<const qt::QtImage>(picture)->image();
    EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() / 2), QColor(Qt::blue));
  }

  QWidget window_;
  QVBoxLayout layout_{&window_};
  QPushButton button_{"above"};
};

TEST_F(Hosts, AQuickWidgetShowsItsItems) {
  QQuickWidget quick;
  QQmlComponent component(quick.engine());
  component.setData(kScene, QUrl("file:///application/scene.qml"));
  QObject* const scene = component.create();
  quick.setContent(component.url(), &component, scene);
  quick.setFixedSize(200, 100);
  layout_.addWidget(&button_);
  layout_.addWidget(&quick);
  show(window_);
  expectSceneIn(quick, *scene);
}

TEST_F(Hosts, AContainerShowsTheItemsOfItsWindow) {
  auto* const quick = new QQuickView;
  QQmlComponent component(quick->engine());
  component.setData(kScene, QUrl("file:///application/scene.qml"));
  QObject* const scene = component.create();
  quick->setContent(component.url(), &component, scene);
  QWidget* const container = QWidget::createWindowContainer(quick);
  container->setFixedSize(200, 100);
  layout_.addWidget(&button_);
  layout_.addWidget(container);
  show(window_);
  expectSceneIn(*container, *scene);
}

}  // namespace
}  // namespace tarni::test
