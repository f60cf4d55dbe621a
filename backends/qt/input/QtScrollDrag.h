// QtScrollDrag: one-finger drags over scroll areas. Qt's widgets scroll by wheel and scroll bar
// only; here a drag moves the content by the finger's own way, as it does in a UIScrollView. GUI
// thread.
#pragma once

#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtWidgets/QAbstractScrollArea>
#include <optional>
#include <vector>

QT_BEGIN_NAMESPACE
class QScrollBar;
QT_END_NAMESPACE

namespace tarni::qt {

using ScrollAreas = std::vector<QPointer<QAbstractScrollArea>>;

// The areas that a drag beginning on `target` can scroll, innermost first. Empty when the drag is
// the program's own: on sliders, splitters, headers, canvases, and where the program scrolls by
// touch.
ScrollAreas areasScrolledFrom(QWidget* target);

class QtScrollDrag {
 public:
  // Takes the innermost area that scrolls along the longer side of `displacement`; null when none
  // does.
  static std::optional<QtScrollDrag> start(const ScrollAreas& areas, QPointF displacement);

  // `displacement` in points, from where the finger went down. The program may run in here.
  void scrollTo(QPointF displacement) const;

 private:
  explicit QtScrollDrag(QAbstractScrollArea& area);

  QPointer<QAbstractScrollArea> area_;
  int horizontalStart_;
  int verticalStart_;
};

}  // namespace tarni::qt
