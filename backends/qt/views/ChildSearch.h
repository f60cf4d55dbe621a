// ChildSearch: QWidget::childAt for many points of one window: the same answers, but a parent of
// many children is not gone through for each of them. Holds as long as nothing changes. GUI thread.
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>
#include <unordered_map>
#include <vector>

#include "platform/QuartzCore/RectIndex.h"

namespace tarni::qt {

class ChildSearch {
 public:
  // The deepest widget below `widget` at that point of it; null for none.
  QWidget* childAt(QWidget& widget, QPoint point);

 private:
  struct Children {
    std::vector<QPointer<QWidget>> widgets;  // back to front
    platform::RectIndex places;
  };

  const Children& childrenOf(const QWidget& widget);
  QWidget* foremostChildAt(const QWidget& widget, QPoint point);

  std::unordered_map<const QWidget*, Children> known_;
};

}  // namespace tarni::qt
