// QtImage: a picture of a widget, or of a part of one. Made on the GUI thread, immutable from then
// on; encoding may run on any thread.
#pragma once

#include <QtGui/QImage>

#include "platform/UIKit/UIImage.h"

QT_BEGIN_NAMESPACE
class QWidget;
class QRect;
QT_END_NAMESPACE

namespace tarni::qt {

class QtImage final : public platform::UIImage {
 public:
  // The image's device pixel ratio is its scale. An alpha channel is not looked at.
  explicit QtImage(QImage image) : image_(std::move(image)) {}

  platform::CGSize size() const override;
  double scale() const override { return image_.devicePixelRatio(); }
  platform::UIImageRef crop(const platform::CGRect& rect) const override;
  platform::UIImageRef blurred(std::span<const platform::CGRect> parts) const override;
  std::vector<std::byte> JPEGRepresentation(double quality) const override;
  std::vector<std::byte> PNGRepresentation() const override;

  const QImage& image() const { return image_; }

 private:
  const QImage image_;
};

// Draws `part` (in the widget's coordinates) of the widget and of all its children, at the scale of
// its screen. Null for an empty part; a widget that is not shown gives an empty sheet. GUI thread.
platform::UIImageRef draw(QWidget& widget, const QRect& part);

}  // namespace tarni::qt
