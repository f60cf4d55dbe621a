// Canvas: draws shapes and texts into an image, in the coordinates of the view that is drawn. Main
// thread.
#pragma once

#include <string_view>

#include "backends/headless/drawing/TextStyle.h"
#include "platform/QuartzCore/CGGeometry.h"

typedef struct _cairo cairo_t;            // NOLINT(modernize-use-using): Cairo's own
typedef struct _PangoLayout PangoLayout;  // NOLINT(modernize-use-using): Pango's own

namespace tarni::headless {

class Image;

class Canvas {
 public:
  // Borrows `cairo`.
  explicit Canvas(cairo_t* cairo) : cairo_(cairo) {}
  ~Canvas();
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  void fill(const platform::CGRect& rect, const platform::CGColor& color, double cornerRadius = 0);
  // A line of `width` points inside the edges of `rect`.
  void stroke(const platform::CGRect& rect, const platform::CGColor& color, double width,
              double cornerRadius = 0);
  void line(platform::CGPoint from, platform::CGPoint to, const platform::CGColor& color,
            double width);
  void image(const Image& image, const platform::CGRect& rect);
  // One line in the middle of `rect`'s height; what does not fit ends in an ellipsis.
  void text(std::string_view text, const platform::CGRect& rect, const TextStyle& style);
  // Wraps at the width of `rect`, from its top.
  void paragraph(std::string_view text, const platform::CGRect& rect, const TextStyle& style);

  // --- for the renderer
  void save();
  void restore();
  void transform(const platform::CGAffineTransform& transform);
  void clip(const platform::CGRect& rect, double cornerRadius);
  // Whether any of the rectangle would be seen.
  bool isVisible(const platform::CGRect& rect) const;
  // What is drawn until `endGroup` is shown with `alpha` as a whole.
  void beginGroup();
  void endGroup(double alpha);

 private:
  void path(const platform::CGRect& rect, double cornerRadius);
  void color(const platform::CGColor& color);
  PangoLayout* layout(std::string_view text, const platform::CGRect& rect, const TextStyle& style);

  cairo_t* cairo_;
  PangoLayout* layout_ = nullptr;  // one for all texts
};

}  // namespace tarni::headless
