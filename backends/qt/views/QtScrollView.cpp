#include "backends/qt/views/QtScrollView.h"

#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTextEdit>
#include <cmath>

#include "backends/qt/program/InputQueue.h"
#include "backends/qt/program/QtText.h"
#include "backends/qt/views/ViewRegistry.h"

namespace tarni::qt {

using platform::CGPoint;

QAbstractScrollArea* QtScrollView::area() const {
  return static_cast<QAbstractScrollArea*>(widget());
}

const QWidget* QtScrollView::transparentChild() const {
  return area()->viewport();
}

CGPoint QtScrollView::contentOffset() const {
  if (!area()) return {};
  const QScrollBar& across = *area()->horizontalScrollBar();
  const QScrollBar& down = *area()->verticalScrollBar();
  return {across.value() * pointsAStep(across), down.value() * pointsAStep(down)};
}

platform::Task<void> QtScrollView::setContentOffset(CGPoint offset, bool) {
  const auto self = std::static_pointer_cast<QtScrollView>(shared_from_this());
  return performAsInput([self, offset] {
    const auto scroll = [&](QScrollBar* bar, double points) {
      bar->setValue(static_cast<int>(std::lround(points / self->pointsAStep(*bar))));
    };
    if (self->area()) scroll(self->area()->horizontalScrollBar(), offset.x);
    if (self->area()) scroll(self->area()->verticalScrollBar(), offset.y);
  });
}

double QtScrollView::pointsAStep(const QScrollBar& bar) const {
  if (!scrollsPerItem(bar.orientation())) return 1;
  const QSize visible = area()->viewport()->size();
  const int extent = bar.orientation() == Qt::Horizontal ? visible.width() : visible.height();
  // A page is what is visible, so a page step counts the rows that are.
  return std::max(1.0, static_cast<double>(extent) / std::max(1, bar.pageStep()));
}

std::optional<std::string> QtTextView::textViewText() const {
  if (const auto* const rich = qobject_cast<QTextEdit*>(widget())) return utf8(rich->toPlainText());
  if (const auto* const plain = qobject_cast<QPlainTextEdit*>(widget())) {
    return utf8(plain->toPlainText());
  }
  return std::nullopt;
}

bool QtTextView::scrollsPerItem(Qt::Orientation orientation) const {
  return orientation == Qt::Vertical && qobject_cast<QPlainTextEdit*>(widget());
}

}  // namespace tarni::qt
