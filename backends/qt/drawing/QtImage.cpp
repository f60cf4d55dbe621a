#include "backends/qt/drawing/QtImage.h"

#include <png.h>
#include <private/qwidget_p.h>
#include <qpa/qplatformbackingstore.h>
#include <turbojpeg.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QBackingStore>
#include <QtGui/QPainter>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>
#include <algorithm>
#include <cmath>
#include <memory>
#include <unordered_map>
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

// What the program has painted itself, so that it paints nothing again; null where that is not all
// of the window, or not what a person sees.
QImage painted(QWidget& window, const QRect& part) {
  const QWindow* const handle = window.windowHandle();
  const bool isWhole =
      handle && handle->isExposed() && !QWidgetPrivate::get(&window)->textureChildSeen;
  const bool isBeingPainted = window.testAttribute(Qt::WA_WState_InPaintEvent);
  const bool showsThrough = window.testAttribute(Qt::WA_TranslucentBackground);
  if (!isWhole || isBeingPainted || showsThrough) return {};
  QCoreApplication::sendPostedEvents(&window, QEvent::UpdateRequest);
  const QBackingStore* const store = window.backingStore();
  const QImage image = store && store->handle() ? store->handle()->toImage() : QImage();
  const double scale = window.devicePixelRatioF();
  const QSize size(pixels(window.width(), scale), pixels(window.height(), scale));
  if (image.size() != size) return {};
  const QRect there(pixels(part.x(), scale), pixels(part.y(), scale), pixels(part.width(), scale),
                    pixels(part.height(), scale));
  QImage copy = image.copy(there).convertToFormat(QImage::Format_RGB32);
  copy.setDevicePixelRatio(scale);
  return copy;
}

QImage drawn(QWidget& widget, const QRect& part) {
  const double scale = widget.devicePixelRatioF();
  QImage image(pixels(part.width(), scale), pixels(part.height(), scale), QImage::Format_RGB32);
  if (image.isNull()) return image;
  image.setDevicePixelRatio(scale);
  // A translucent window shows this where it draws nothing itself.
  image.fill(widget.palette().color(QPalette::Window));
  // Drawing a hidden widget would lay it out before the program does.
  if (widget.isVisible()) {
    drawBehind(widget, part, image);
    render(widget, part, QPoint(), image, QWidget::DrawChildren);
  }
  return image;
}

// Each widget as it was drawn for its parts, as much of it as is not clipped away; null while only
// one part was asked for.
using Wholes = std::unordered_map<const QWidget*, QImage>;

Wholes* wholesWhileStill() {
  static const char key = 0;
  return keptWhileStill<Wholes>(&key);
}

// The part of the widget as it was drawn for the parts before; null for the first one. A widget
// that draws thousands of items goes through all of them for the picture of each.
QImage cutFromWhole(QWidget& widget, const QRect& part) {
  const QRect shown = QWidgetPrivate::get(&widget)->clipRect();
  const double scale = widget.devicePixelRatioF();
  const QRectF place(QPointF(part.topLeft() - shown.topLeft()) * scale,
                     QSizeF(part.size()) * scale);
  const bool isOfWholePixels = place == QRectF(place.toAlignedRect());
  if (part == shown || !shown.contains(part) || !isOfWholePixels) return {};
  Wholes* const before = wholesWhileStill();
  if (!before) return {};
  const auto [known, isFirst] = before->try_emplace(&widget);
  if (isFirst) return {};
  QImage whole = known->second;
  if (whole.isNull()) {
    whole = drawn(widget, shown);
    // Nothing is kept of what was drawn while the program ran.
    Wholes* const now = wholesWhileStill();
    if (now && now->contains(&widget)) (*now)[&widget] = whole;
  }
  return whole.copy(place.toAlignedRect());
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

// In grey, as any colour made of what is there would tell how long a text is.
platform::UIImageRef QtImage::blurred(std::span<const platform::CGRect> parts) const {
  QImage image = image_;
  QPainter painter(&image);
  for (const platform::CGRect& part : parts) {
    const QRectF place(part.minX(), part.minY(), part.size.width, part.size.height);
    const QRect pixels = QRectF(place.topLeft() * scale(), place.size() * scale()).toAlignedRect();
    painter.fillRect(QRectF(QPointF(pixels.topLeft()) / scale(), QSizeF(pixels.size()) / scale()),
                     Qt::lightGray);
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

// The library's fast way takes a fifth of the time of Qt's, which looks for the best filter of each
// line, for a picture of about the same size.
std::vector<std::byte> QtImage::PNGRepresentation() const {
  // An alpha channel would be written, unused as it is.
  const QImage pixels = image_.convertToFormat(QImage::Format_RGB888);
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(pixels.width());
  image.height = static_cast<png_uint_32>(pixels.height());
  image.format = PNG_FORMAT_RGB;
  image.flags = PNG_IMAGE_FLAG_FAST;
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
  std::vector<std::byte> bytes(size);
  const auto stride = static_cast<png_int_32>(pixels.bytesPerLine());
  const bool isWritten =
      !pixels.isNull() && png_image_write_to_memory(&image, bytes.data(), &size, 0,
                                                    pixels.constBits(), stride, nullptr) != 0;
  bytes.resize(isWritten ? size : 0);
  return bytes;
}

platform::UIImageRef draw(QWidget& widget, const QRect& part) {
  if (part.isEmpty()) return nullptr;
  if (widget.isWindow() && widget.isVisible()) {
    if (QImage image = painted(widget, part); !image.isNull()) {
      return std::make_shared<QtImage>(std::move(image));
    }
  }
  QImage image = cutFromWhole(widget, part);
  if (image.isNull()) image = drawn(widget, part);
  return image.isNull() ? nullptr : std::make_shared<QtImage>(std::move(image));
}

}  // namespace tarni::qt
