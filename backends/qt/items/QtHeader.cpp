#include "backends/qt/items/QtHeader.h"

#include <QtWidgets/QHeaderView>

#include "backends/qt/items/VisibleIndexes.h"

namespace tarni::qt {
namespace {

int sectionOf(QtHeader::Key key) {
  return static_cast<int>(key);
}

}  // namespace

QHeaderView& QtHeader::header() const {
  return static_cast<QHeaderView&>(*widget());
}

bool QtHeader::has(Key key) const {
  return sectionOf(key) < header().count() && !header().isSectionHidden(sectionOf(key));
}

QRect QtHeader::rectOf(Key key) const {
  const QWidget& viewport = *header().viewport();
  const int position = header().sectionViewportPosition(sectionOf(key));
  const int size = header().sectionSize(sectionOf(key));
  const QRect section = header().orientation() == Qt::Horizontal
                            ? QRect(position, 0, size, viewport.height())
                            : QRect(0, position, viewport.width(), size);
  return (section & viewport.rect()).translated(viewport.pos());
}

QString QtHeader::titleOf(Key key) const {
  const QAbstractItemModel* const model = header().model();
  if (!model) return {};
  return model->headerData(sectionOf(key), header().orientation(), Qt::DisplayRole).toString();
}

bool QtHeader::isEnabled(Key) const {
  return header().isEnabled();
}

const QWidget* QtHeader::transparentChild() const {
  return header().viewport();
}

void QtHeader::collectKeys(std::vector<Key>& keys) const {
  if (!header().isVisible()) return;
  eachVisibleSection(header(), [&](int section) { keys.push_back(static_cast<Key>(section)); });
}

std::optional<QtHeader::Key> QtHeader::keyAt(const QPoint& point) const {
  const QPoint inside = point - header().viewport()->pos();
  if (!header().viewport()->rect().contains(inside)) return std::nullopt;
  const int section = header().logicalIndexAt(inside);
  if (section < 0) return std::nullopt;
  return static_cast<Key>(section);
}

}  // namespace tarni::qt
