#include "backends/qt/drawing/QtImage.h"

#include <private/qwidget_p.h>
#include <turbojpeg.h>

#include <QtCore/QBuffer>
#include <QtGui/QPainter>
#include <QtWidgets/QWidget>
#include <algorithm>
#include <cmath>
#include <memory>
#include <unordered_set>
#include <vector>

#include "backends/qt/program/Stillness.h"

namespace tarni::qt {
namespace {

int pixels(double points, double scale) {
  return static_cast<int>(std::ceil(points * scale));
}

// True when the window was laid out for another drawing and the program has not run since. The next
// drawing is done with it.
bool isLaidOut(const QWidget& window) {
  static const char key = 0;
  auto* const windows = keptWhileStill<std::unordered_set<const QWidget*>>(&key);
  return windows && !windows->insert(&window).second;
}

void render(QWidget& widget, const QRect& part, QPoint at, QImage& onto,
            QWidget::RenderFlags flags) {
  if (widget.isWindow()) flags |= QWidget::DrawWindowBackground;
  if (!isLaidOut(*widget.window())) return widget.render(&onto, at, QRegion(part), flags);
  // The toolkit goes through all widgets of the window, to lay them out, before it draws one of
  // them, unless it is drawing that one already.
  QWidgetPrivate& hidden = *QWidgetPrivate::get(&widget);
  hidden.createExtra();
  const bool isDrawing = hidden.extra->inRenderWithPainter;
  hidden.extra->inRenderWithPainter = true;
  const QRegion mask = widget.mask();
  QPainter painter(&onto);
  widget.render(&painter, at, mask.isEmpty() ? QRegion(part) : mask & part, flags);
  hidden.extra->inRenderWithPainter = isDrawing;
}

bool hidesWhatIsBehind(const QWidget& widget) {
  if (widget.isWindow() || widget.testAttribute(Qt::WA_OpaquePaintEvent)) return true;
  return widget.autoFillBackground() && widget.palette().brush(widget.backgroundRole()).isOpaque();
}

// A widget mostly draws no background of its own: the ones that it stands on show through.
void drawBehind(const QWidget& widget, const QRect& part, QImage& onto) {
  std::vector<QWidget*> behind;
  for (const QWidget* front = &widget; !hidesWhatIsBehind(*front);) {
    behind.push_back(front->parentWidget());
    front = behind.back();
  }
  for (auto below = behind.rbegin(); below != behind.rend(); ++below) {
    const QPoint origin = widget.mapTo(*below, QPoint());
    const QRect shown = part.translated(origin) & (*below)->rect();
    if (!shown.isEmpty()) {
      render(**below, shown, shown.topLeft() - part.topLeft() - origin, onto, {});
    }
  }
}

struct EndCompressor {
  void operator()(void* compressor) const { tjDestroy(compressor); }
};

struct FreeJPEG {
  void operator()(unsigned char* bytes) const { tjFree(bytes); }
};

}  // namespace

platform::CGSize QtImage::size() const {
  return {image_.width() / scale(), image_.height() / scale()};
}

platform::UIImageRef QtImage::crop(const platform::CGRect& rect) const {
  QImage cropped(pixels(rect.size.width, scale()), pixels(rect.size.height, scale()),
                 QImage::Format_RGB32);
  cropped.setDevicePixelRatio(scale());
  if (!cropped.isNull()) {
    cropped.fill(Qt::black);
    QPainter painter(&cropped);
    painter.drawImage(QPointF(-rect.origin.x, -rect.origin.y), image_);
  }
  return std::make_shared<QtImage>(cropped);
}

// How long a text is does not show either: each part has its middle colour.
platform::UIImageRef QtImage::blurred(std::span<const platform::CGRect> parts) const {
  QImage image = image_;
  QPainter painter(&image);
  for (const platform::CGRect& part : parts) {
    const QRectF place(part.minX(), part.minY(), part.size.width, part.size.height);
    const QRectF pixels(place.topLeft() * scale(), place.size() * scale());
    const QImage middle = image_.copy(pixels.toAlignedRect())
                              .scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (!middle.isNull()) painter.fillRect(place, middle.pixelColor(0, 0));
  }
  painter.end();
  return std::make_shared<QtImage>(std::move(image));
}

std::vector<std::byte> QtImage::JPEGRepresentation(double quality) const {
  if (image_.isNull()) return {};
  const std::unique_ptr<void, EndCompressor> compressor(tjInitCompress());
  unsigned char* made = nullptr;
  unsigned long length = 0;
  const int percent = std::clamp(static_cast<int>(std::lround(quality * 100)), 1, 100);
  // The 32-bit format is blue, green, red, unused in memory.
  const int failed = tjCompress2(compressor.get(), image_.constBits(), image_.width(),
                                 static_cast<int>(image_.bytesPerLine()), image_.height(),
                                 TJPF_BGRX, &made, &length, TJSAMP_420, percent, 0);
  const std::unique_ptr<unsigned char, FreeJPEG> bytes(made);
  if (failed != 0) return {};
  const auto* const first = reinterpret_cast<const std::byte*>(bytes.get());
  return {first, first + length};
}

std::vector<std::byte> QtImage::PNGRepresentation() const {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  // An alpha channel would be written, unused as it is.
  if (!image_.convertToFormat(QImage::Format_RGB32).save(&buffer, "PNG")) return {};
  const auto* const first = reinterpret_cast<const std::byte*>(bytes.constData());
  return {first, first + bytes.size()};
}

platform::UIImageRef draw(QWidget& widget, const QRect& part) {
  if (part.isEmpty()) return nullptr;
  const double scale = widget.devicePixelRatioF();
  QImage image(pixels(part.width(), scale), pixels(part.height(), scale), QImage::Format_RGB32);
  if (image.isNull()) return nullptr;
  image.setDevicePixelRatio(scale);
  // A translucent window shows this where it draws nothing itself.
  image.fill(widget.palette().color(QPalette::Window));
  // Drawing a hidden widget would lay it out before the program does.
  if (widget.isVisible()) {
    drawBehind(widget, part, image);
    render(widget, part, QPoint(), image, QWidget::DrawChildren);
  }
  return std::make_shared<QtImage>(std::move(image));
}

}  // namespace tarni::qt
