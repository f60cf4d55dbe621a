#include "backends/qt/quick/QuickImage.h"

#include <QtCore/QPointer>
#include <QtGui/QPainter>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickItemGrabResult>
#include <QtWidgets/QWidget>
#include <cmath>

#include "backends/qt/QtImage.h"
#include "backends/qt/QtProgram.h"
#include "backends/qt/quick/QuickScene.h"

namespace tarni::qt {
namespace {

using platform::Task;
using platform::UIImageRef;

// Far longer than a frame takes; a window that is hidden meanwhile never draws it.
constexpr double kFrameSeconds = 2;

// Copies the part onto a sheet of the window's colour: what no item draws is transparent.
UIImageRef cut(const QImage& scene, const QColor& background, const QRectF& part) {
  const double scale = scene.devicePixelRatio();
  QImage image(static_cast<int>(std::ceil(part.width() * scale)),
               static_cast<int>(std::ceil(part.height() * scale)), QImage::Format_RGB32);
  if (image.isNull()) return nullptr;
  image.setDevicePixelRatio(scale);
  image.fill(QColor(background.rgb()));
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
  QImage image = grab->image();
  image.setDevicePixelRatio(scale);
  co_return image;
}

}  // namespace

Task<UIImageRef> drawScene(QQuickWindow& scene, QRectF part) {
  if (part.isEmpty()) co_return nullptr;
  if (QWidget* const host = sceneHost(scene)) co_return draw(*host, part.toAlignedRect());
  const QColor background = scene.color();
  // Grabbing a window that is not shown would show it for a moment.
  QImage image = scene.isVisible() ? scene.grabWindow() : QImage();
  if (image.isNull() && scene.isVisible()) image = co_await nextFrame(scene);
  co_return cut(image, background, part);
}

}  // namespace tarni::qt
