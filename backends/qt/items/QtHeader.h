// QtHeader: the view of a table's header, whose visible sections are buttons. A section is known by
// its logical index; where others come or go before it, all become buttons anew, since the same
// index is another section then. GUI thread.
#pragma once

#include "backends/qt/views/QtDrawnButtons.h"

QT_BEGIN_NAMESPACE
class QAbstractItemModel;
class QHeaderView;
QT_END_NAMESPACE

namespace tarni::qt {

class QtHeader final : public QtWithButtons<QtView> {
 public:
  using QtWithButtons<QtView>::QtWithButtons;
  bool has(Key key) const override;
  QRect rectOf(Key key) const override;
  QString titleOf(Key key) const override;
  bool isEnabled(Key key) const override;

 protected:
  const QWidget* transparentChild() const override;
  void collectKeys(std::vector<Key>& keys) const override;
  std::optional<Key> keyAt(const QPoint& point) const override;
  const char* buttonClass() const override { return names::kHeaderButton; }

 private:
  QHeaderView& header() const;
  Key keyOf(int section) const;
  // Notes from now on how often sections of the present model are shifted.
  void follow() const;

  mutable QPointer<const QAbstractItemModel> model_;
  mutable std::unique_ptr<QObject> listener_;  // to that model
  const std::shared_ptr<quint16> shifts_ = std::make_shared<quint16>(0);
};

}  // namespace tarni::qt
