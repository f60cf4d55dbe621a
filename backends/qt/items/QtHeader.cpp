#include "backends/qt/items/QtHeader.h"

#include <QtWidgets/QHeaderView>
#include <limits>

#include "backends/qt/items/VisibleIndexes.h"

namespace tarni::qt {
namespace {

constexpr unsigned kSectionBits = std::numeric_limits<QtHeader::Key>::digits - 16;

int sectionOf(QtHeader::Key key) {
  return static_cast<int>(key & ((QtHeader::Key{1} << kSectionBits) - 1));
}

}  // namespace

QHeaderView& QtHeader::header() const {
  return static_cast<QHeaderView&>(*widget());
}

bool QtHeader::has(Key key) const {
  follow();
  const int section = sectionOf(key);
  return key == keyOf(section) && section < header().count() && !header().isSectionHidden(section);
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
  follow();
  if (!header().isVisible()) return;
  eachVisibleSection(header(), [&](int section) { keys.push_back(keyOf(section)); });
}

std::optional<QtHeader::Key> QtHeader::keyAt(const QPoint& point) const {
  const QPoint inside = point - header().viewport()->pos();
  if (!header().viewport()->rect().contains(inside)) return std::nullopt;
  const int section = header().logicalIndexAt(inside);
  if (section < 0) return std::nullopt;
  follow();
  return keyOf(section);
}

QtHeader::Key QtHeader::keyOf(int section) const {
  return Key{*shifts_} << kSectionBits | static_cast<Key>(section);
}

void QtHeader::follow() const {
  const QAbstractItemModel* const model = header().model();
  if (model == model_ && listener_) return;
  ++*shifts_;
  model_ = model;
  listener_ = std::make_unique<QObject>();
  if (!model) return;
  using Model = QAbstractItemModel;
  const bool isAcross = header().orientation() == Qt::Horizontal;
  const auto count = [model, isAcross] {
    return isAcross ? model->columnCount() : model->rowCount();
  };
  // At the end none is shifted.
  const auto inserted = [shifts = shifts_, count](const QModelIndex& parent, int, int last) {
    if (!parent.isValid() && last + 1 < count()) ++*shifts;
  };
  const auto removed = [shifts = shifts_, count](const QModelIndex& parent, int first, int) {
    if (!parent.isValid() && first < count()) ++*shifts;
  };
  const auto moved = [shifts = shifts_] { ++*shifts; };
  QObject* const listener = listener_.get();
  QObject::connect(model, isAcross ? &Model::columnsInserted : &Model::rowsInserted, listener,
                   inserted);
  QObject::connect(model, isAcross ? &Model::columnsRemoved : &Model::rowsRemoved, listener,
                   removed);
  QObject::connect(model, isAcross ? &Model::columnsMoved : &Model::rowsMoved, listener, moved);
}

}  // namespace tarni::qt
