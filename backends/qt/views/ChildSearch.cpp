#include "backends/qt/views/ChildSearch.h"

namespace tarni::qt {
namespace {

bool takesPoints(const QWidget& child) {
  return !child.isWindow() && !child.isHidden() &&
         !child.testAttribute(Qt::WA_TransparentForMouseEvents);
}

bool holds(const QWidget& widget, QPoint point) {
  if (!widget.rect().contains(point)) return false;
  const QRegion mask = widget.mask();
  return mask.isEmpty() || mask.contains(point);
}

platform::CGRect placeOf(const QWidget& child) {
  return {{static_cast<double>(child.x()), static_cast<double>(child.y())},
          {static_cast<double>(child.width()), static_cast<double>(child.height())}};
}

}  // namespace

QWidget* ChildSearch::childAt(QWidget& widget, QPoint point) {
  if (!holds(widget, point)) return nullptr;
  QWidget* deepest = nullptr;
  for (QWidget* at = foremostChildAt(widget, point); at; at = foremostChildAt(*at, point)) {
    deepest = at;
    point -= at->geometry().topLeft();
  }
  return deepest;
}

QWidget* ChildSearch::foremostChildAt(const QWidget& widget, QPoint point) {
  const Children& children = childrenOf(widget);
  QWidget* found = nullptr;
  const platform::CGPoint at{static_cast<double>(point.x()), static_cast<double>(point.y())};
  children.places.eachAt(at, [&](std::size_t position) {
    QWidget* const child = children.widgets[position];
    if (child && holds(*child, point - child->geometry().topLeft())) found = child;
    return found != nullptr;
  });
  return found;
}

const ChildSearch::Children& ChildSearch::childrenOf(const QWidget& widget) {
  const auto [place, isNew] = known_.try_emplace(&widget);
  Children& children = place->second;
  if (!isNew) return children;
  std::vector<platform::CGRect> places;
  for (QObject* const object : widget.children()) {
    if (!object->isWidgetType()) continue;
    auto* const child = static_cast<QWidget*>(object);
    if (!takesPoints(*child)) continue;
    children.widgets.emplace_back(child);
    places.push_back(placeOf(*child));
  }
  children.places = platform::RectIndex(std::move(places));
  return children;
}

}  // namespace tarni::qt
