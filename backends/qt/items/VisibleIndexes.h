// Which items of an item view are on screen. The cost is that of the items that are, however many
// the model holds. GUI thread.
#pragma once

#include <QtCore/QAbstractItemModel>
#include <QtWidgets/QHeaderView>
#include <vector>

QT_BEGIN_NAMESPACE
class QAbstractItemView;
QT_END_NAMESPACE

namespace tarni::qt {

// Appends the items in reading order: row by row, in each row from the start of the line to its
// end.
void appendVisibleIndexes(const QAbstractItemView& view, std::vector<QModelIndex>& indexes);

// Calls `visit(section)` with the logical index of each section that is on screen, in visual order.
template <typename Visit>
void eachVisibleSection(const QHeaderView& header, Visit visit) {
  const bool across = header.orientation() == Qt::Horizontal;
  const QSize size = header.viewport()->size();
  const int end = across ? size.width() : size.height();
  const bool fromRight = across && header.layoutDirection() == Qt::RightToLeft;
  int at = fromRight ? end - 1 : 0;
  while (at >= 0 && at < end) {
    const int section = header.logicalIndexAt(at);
    if (section < 0) return;
    visit(section);
    const int start = header.sectionViewportPosition(section);
    at = fromRight ? start - 1 : start + header.sectionSize(section);
  }
}

}  // namespace tarni::qt
