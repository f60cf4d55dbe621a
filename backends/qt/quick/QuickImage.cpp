#include "backends/qt/quick/QuickImage.h"

#include <QtCore/QPointer>
#include <QtGui/QPainter>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickItemGrabResult>
#include <QtQuick/QQuickPaintedItem>
#include <QtWidgets/QWidget>
#include <cmath>
#include <limits>

#include "backends/qt/drawing/QtImage.h"
#include "backends/qt/program/QtProgram.h"
#include "backends/qt/quick/QuickScene.h"
#include "backends/qt/quick/QuickStill.h"
#include "backends/qt/quick/QuickTree.h"

namespace tarni::qt {
namespace {

using platform::Task;
using platform::UIImageRef;

// Far longer than a frame takes; a window that is hidden meanwhile never draws it.
constexpr double kFrameSeconds = 2;

// The window's colour as an item behind all others, since a picture of items is black where none of
// them draws. Nobody sees it come and go.
class Background : public QQuickPaintedItem {
 public:
  explicit Background(const QQuickWindow& scene) : color_(scene.color()) {
    hideFromWalks(*this);
    setZ(std::numeric_limits<double>::lowest());
    setSize(scene.contentItem()->size());
    setParentItem(scene.contentItem());
  }

  void paint(QPainter* painter) override { painter->fillRect(boundingRect(), color_); }

 private:
  const QColor color_;
};

UIImageRef cut(const QImage& scene, const QRectF& part) {
  const double scale = scene.devicePixelRatio();
  QImage image(static_cast<int>(std::ceil(part.width() * scale)),
               static_cast<int>(std::ceil(part.height() * scale)), QImage::Format_RGB32);
  if (image.isNull()) return nullptr;
  image.setDevicePixelRatio(scale);
  image.fill(Qt::black);
  QPainter painter(&image);
  painter.drawImage(-part.topLeft(), scene);
  painter.end();
  return std::make_shared<QtImage>(std::move(image));
}

// The scene's picture with the next frame; a null image when none comes.
Task<QImage> nextFrame(QQuickWindow& scene) {
  const QSize size = scene.size();
  const double scale = scene.effectiveDevicePixelRatio();
  const QSharedPointer<QQuickItemGrabResult> grab = scene.contentItem()->grabToImage(size * scale);
  if (!grab) co_return QImage();
  const auto suspension = std::make_shared<Suspension>();
  Pause pause{suspension,
              [suspension, grab] {
                QObject::connect(grab.data(), &QQuickItemGrabResult::ready,
                                 [suspension] { suspension->resumeLater(); });
              },
              kFrameSeconds};
  co_await pause;
  co_return grab->image();
}

// A null image when the scene is not shown.
Task<QImage> picture(QQuickWindow& scene) {
  if (const QuickStill* const still = stillOf(scene)) co_return still->image;
  // Grabbing a window that is not shown would show it for a moment.
  if (!scene.isVisible()) co_return QImage();
  const double width = scene.width();
  const QPointer<QQuickWindow> asked = &scene;
  QImage image = scene.grabWindow();
  std::unique_ptr<QQuickItem> background;
  if (image.isNull()) {
    background = std::make_unique<Background>(scene);
    image = co_await nextFrame(scene);
  }
  // Not every renderer says how many pixels it gives a point.
  if (!image.isNull()) image.setDevicePixelRatio(image.width() / width);
  keepStill(asked, image, std::move(background));
  co_return image;
}

}  // namespace

Task<UIImageRef> drawScene(QQuickWindow& scene, QRectF part) {
  if (part.isEmpty()) co_return nullptr;
  QWidget* const host = sceneHost(scene);
  if (host && host->inherits("QQuickWidget")) co_return draw(*host, part.toAlignedRect());
  const QImage image = co_await picture(scene);
  co_return cut(image, part);
}

}  // namespace tarni::qt
