#include "backends/qt/input/QtScrollDrag.h"

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QGraphicsView>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMdiArea>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QScroller>
#include <QtWidgets/QSplitter>
#include <algorithm>
#include <cmath>

namespace tarni::qt {
namespace {

bool canScroll(const QScrollBar* bar) {
  return bar && bar->minimum() < bar->maximum();
}

bool isDraggedByProgram(QWidget* widget) {
  if (qobject_cast<QAbstractSlider*>(widget) || qobject_cast<QSplitterHandle*>(widget) ||
      qobject_cast<QHeaderView*>(widget) || qobject_cast<QGraphicsView*>(widget) ||
      qobject_cast<QMdiArea*>(widget) || QScroller::hasScroller(widget)) {
    return true;
  }
  // The viewport of every scroll area claims to take touches, for two-finger panning.
  const auto* const parent = qobject_cast<QAbstractScrollArea*>(widget->parentWidget());
  const bool isViewport = parent && parent->viewport() == widget;
  return !isViewport && !qobject_cast<QAbstractScrollArea*>(widget) &&
         widget->testAttribute(Qt::WA_AcceptTouchEvents);
}

// How many points of content one step of the bar moves: bars count points, rows or lines.
double pointsPerStep(const QAbstractScrollArea& area, Qt::Orientation orientation) {
  const bool isVertical = orientation == Qt::Vertical;
  if (const auto* const view = qobject_cast<const QAbstractItemView*>(&area)) {
    const auto mode = isVertical ? view->verticalScrollMode() : view->horizontalScrollMode();
    if (mode == QAbstractItemView::ScrollPerPixel) return 1;
    const QRect first = view->visualRect(view->indexAt(QPoint(0, 0)));
    const int length = isVertical ? first.height() : first.width();
    if (length > 0) return length;
  }
  if (const auto* const text = qobject_cast<const QPlainTextEdit*>(&area); text && isVertical) {
    return std::max(text->cursorRect().height(), 1);
  }
  return 1;
}

void scroll(QScrollBar* bar, int start, double points, double pointsPerStep) {
  if (canScroll(bar)) bar->setValue(start - static_cast<int>(std::lround(points / pointsPerStep)));
}

}  // namespace

ScrollAreas areasScrolledFrom(QWidget* target) {
  ScrollAreas areas;
  for (QWidget* widget = target; widget; widget = widget->parentWidget()) {
    if (isDraggedByProgram(widget)) return {};
    auto* const area = qobject_cast<QAbstractScrollArea*>(widget);
    if (area && (canScroll(area->horizontalScrollBar()) || canScroll(area->verticalScrollBar()))) {
      areas.emplace_back(area);
    }
    if (widget->isWindow()) break;
  }
  return areas;
}

QtScrollDrag::QtScrollDrag(QAbstractScrollArea& area)
    : area_(&area),
      horizontalStart_(area.horizontalScrollBar()->value()),
      verticalStart_(area.verticalScrollBar()->value()) {}

std::optional<QtScrollDrag> QtScrollDrag::start(const ScrollAreas& areas, QPointF displacement) {
  const bool isVertical = std::abs(displacement.y()) > std::abs(displacement.x());
  for (const auto& area : areas) {
    if (area && canScroll(isVertical ? area->verticalScrollBar() : area->horizontalScrollBar())) {
      return QtScrollDrag(*area);
    }
  }
  return std::nullopt;
}

void QtScrollDrag::scrollTo(QPointF displacement) const {
  if (!area_) return;
  const double across = pointsPerStep(*area_, Qt::Horizontal);
  const double down = pointsPerStep(*area_, Qt::Vertical);
  scroll(area_->horizontalScrollBar(), horizontalStart_, displacement.x(), across);
  if (area_) scroll(area_->verticalScrollBar(), verticalStart_, displacement.y(), down);
}

}  // namespace tarni::qt
