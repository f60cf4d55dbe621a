#include "backends/headless/drawing/Canvas.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <memory>
#include <numbers>

#include "backends/headless/drawing/Image.h"

namespace tarni::headless {

using platform::CGColor;
using platform::CGPoint;
using platform::CGRect;

namespace {

PangoAlignment pangoAlignment(TextAlignment alignment) {
  switch (alignment) {
    case TextAlignment::Center:
      return PANGO_ALIGN_CENTER;
    case TextAlignment::Right:
      return PANGO_ALIGN_RIGHT;
    case TextAlignment::Left:
      break;
  }
  return PANGO_ALIGN_LEFT;
}

}  // namespace

Canvas::~Canvas() {
  if (layout_) g_object_unref(layout_);
}

// --- shapes

void Canvas::color(const CGColor& color) {
  cairo_set_source_rgba(cairo_, color.red, color.green, color.blue, color.alpha);
}

void Canvas::path(const CGRect& rect, double cornerRadius) {
  const double radius =
      std::clamp(cornerRadius, 0.0, std::min(rect.size.width, rect.size.height) / 2);
  cairo_new_path(cairo_);
  if (radius <= 0) {
    cairo_rectangle(cairo_, rect.minX(), rect.minY(), rect.size.width, rect.size.height);
    return;
  }
  constexpr double kQuarter = std::numbers::pi / 2;
  cairo_arc(cairo_, rect.maxX() - radius, rect.minY() + radius, radius, -kQuarter, 0);
  cairo_arc(cairo_, rect.maxX() - radius, rect.maxY() - radius, radius, 0, kQuarter);
  cairo_arc(cairo_, rect.minX() + radius, rect.maxY() - radius, radius, kQuarter, 2 * kQuarter);
  cairo_arc(cairo_, rect.minX() + radius, rect.minY() + radius, radius, 2 * kQuarter, 3 * kQuarter);
  cairo_close_path(cairo_);
}

void Canvas::fill(const CGRect& rect, const CGColor& color, double cornerRadius) {
  if (rect.size.width <= 0 || rect.size.height <= 0) return;
  this->color(color);
  path(rect, cornerRadius);
  cairo_fill(cairo_);
}

void Canvas::stroke(const CGRect& rect, const CGColor& color, double width, double cornerRadius) {
  const CGRect middle{{rect.minX() + width / 2, rect.minY() + width / 2},
                      {rect.size.width - width, rect.size.height - width}};
  if (middle.size.width <= 0 || middle.size.height <= 0) return fill(rect, color, cornerRadius);
  this->color(color);
  cairo_set_line_width(cairo_, width);
  path(middle, cornerRadius - width / 2);
  cairo_stroke(cairo_);
}

void Canvas::line(CGPoint from, CGPoint to, const CGColor& color, double width) {
  this->color(color);
  cairo_set_line_width(cairo_, width);
  cairo_new_path(cairo_);
  cairo_move_to(cairo_, from.x, from.y);
  cairo_line_to(cairo_, to.x, to.y);
  cairo_stroke(cairo_);
}

void Canvas::image(const Image& image, const CGRect& rect) {
  const platform::CGSize size = image.size();
  if (size.width <= 0 || size.height <= 0) return;
  cairo_save(cairo_);
  cairo_translate(cairo_, rect.minX(), rect.minY());
  cairo_scale(cairo_, rect.size.width / size.width / image.scale(),
              rect.size.height / size.height / image.scale());
  cairo_set_source_surface(cairo_, image.surface(), 0, 0);
  cairo_paint(cairo_);
  cairo_restore(cairo_);
}

// --- texts

PangoLayout* Canvas::layout(std::string_view text, const CGRect& rect, const TextStyle& style) {
  if (!layout_) layout_ = pango_cairo_create_layout(cairo_);
  const std::unique_ptr<PangoFontDescription, decltype(&pango_font_description_free)> font(
      pango_font_description_from_string("Sans"), pango_font_description_free);
  pango_font_description_set_absolute_size(font.get(), style.size * PANGO_SCALE);
  pango_font_description_set_weight(font.get(),
                                    style.bold ? PANGO_WEIGHT_SEMIBOLD : PANGO_WEIGHT_NORMAL);
  pango_layout_set_font_description(layout_, font.get());
  pango_layout_set_alignment(layout_, pangoAlignment(style.alignment));
  pango_layout_set_width(layout_, pango_units_from_double(std::max(0.0, rect.size.width)));
  pango_layout_set_text(layout_, text.data(), static_cast<int>(text.size()));
  pango_cairo_update_layout(cairo_, layout_);
  return layout_;
}

void Canvas::text(std::string_view text, const CGRect& rect, const TextStyle& style) {
  PangoLayout* const layout = this->layout(text, rect, style);
  pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_END);
  pango_layout_set_single_paragraph_mode(layout, TRUE);
  int height = 0;
  pango_layout_get_size(layout, nullptr, &height);
  color(style.color);
  cairo_move_to(cairo_, rect.minX(), rect.midY() - pango_units_to_double(height) / 2);
  pango_cairo_show_layout(cairo_, layout);
}

void Canvas::paragraph(std::string_view text, const CGRect& rect, const TextStyle& style) {
  PangoLayout* const layout = this->layout(text, rect, style);
  pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_NONE);
  pango_layout_set_single_paragraph_mode(layout, FALSE);
  pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
  color(style.color);
  cairo_move_to(cairo_, rect.minX(), rect.minY());
  pango_cairo_show_layout(cairo_, layout);
}

// --- for the renderer

void Canvas::save() {
  cairo_save(cairo_);
}

void Canvas::restore() {
  cairo_restore(cairo_);
}

void Canvas::transform(const platform::CGAffineTransform& transform) {
  const cairo_matrix_t matrix{transform.a, transform.b,  transform.c,
                              transform.d, transform.tx, transform.ty};
  cairo_transform(cairo_, &matrix);
}

void Canvas::clip(const CGRect& rect, double cornerRadius) {
  path(rect, cornerRadius);
  cairo_clip(cairo_);
}

bool Canvas::isVisible(const CGRect& rect) const {
  double left = 0, top = 0, right = 0, bottom = 0;
  cairo_clip_extents(cairo_, &left, &top, &right, &bottom);
  return rect.minX() < right && rect.maxX() > left && rect.minY() < bottom && rect.maxY() > top;
}

void Canvas::beginGroup() {
  cairo_push_group(cairo_);
}

void Canvas::endGroup(double alpha) {
  cairo_pop_group_to_source(cairo_);
  cairo_paint_with_alpha(cairo_, alpha);
}

}  // namespace tarni::headless
