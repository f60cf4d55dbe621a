#include "backends/headless/drawing/Renderer.h"

#include <cairo.h>

#include <memory>
#include <vector>

#include "backends/headless/View.h"
#include "backends/headless/drawing/Canvas.h"
#include "backends/headless/drawing/Image.h"
#include "backends/headless/drawing/TextStyle.h"

namespace tarni::headless {
namespace {

// A view that is begun and not yet ended.
struct Open {
  const View* view;
  std::size_t next = 0;  // the subview to draw next
};

bool isTransparent(const View& view) {
  return view.alpha() < 1;
}

// The view's own look, and the settings under which its subviews are drawn.
void begin(const View& view, Canvas& canvas) {
  canvas.save();
  if (isTransparent(view)) canvas.beginGroup();
  const double radius = view.layer().cornerRadius();
  if (const auto color = view.backgroundColor()) canvas.fill(view.bounds(), *color, radius);
  canvas.save();
  if (view.clipsToBounds()) canvas.clip(view.bounds(), radius);
  if (canvas.isVisible(view.bounds())) view.drawContent(canvas);
}

// A border lies above everything in the view.
void end(const View& view, Canvas& canvas) {
  canvas.restore();
  const Layer& layer = view.layer();
  if (layer.borderWidth() > 0) {
    canvas.stroke(view.bounds(), layer.borderColor().value_or(colors::kBlack), layer.borderWidth(),
                  layer.cornerRadius());
  }
  if (isTransparent(view)) canvas.endGroup(view.alpha());
  canvas.restore();
}

bool isDrawn(const View& view, const Canvas& canvas) {
  if (view.isHidden() || view.alpha() <= 0) return false;
  return !view.clipsToBounds() || canvas.isVisible(view.frame());
}

void drawTree(const View& root, Canvas& canvas) {
  std::vector<Open> open{{&root}};
  begin(root, canvas);
  while (!open.empty()) {
    const View& view = *open.back().view;
    const std::size_t next = open.back().next++;
    if (next == view.subviews().size()) {
      end(view, canvas);
      open.pop_back();
      if (!open.empty()) canvas.restore();
      continue;
    }
    const View& below = view.child(next);
    if (!isDrawn(below, canvas)) continue;
    canvas.save();
    canvas.transform(below.transformToSuperview());
    begin(below, canvas);
    open.push_back({&below});
  }
}

}  // namespace

platform::UIImageRef render(const View& view, double scale) {
  const platform::CGRect bounds = view.bounds();
  cairo_surface_t* const surface = makeSurface(bounds.size, scale);
  if (surface) {
    const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cairo(cairo_create(surface),
                                                                   cairo_destroy);
    cairo_scale(cairo.get(), scale, scale);
    cairo_translate(cairo.get(), -bounds.minX(), -bounds.minY());
    Canvas canvas(cairo.get());
    drawTree(view, canvas);
  }
  return std::make_shared<const Image>(surface, scale);
}

}  // namespace tarni::headless
