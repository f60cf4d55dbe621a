// QtHeader: the view of a table's header, whose visible sections are buttons by their logical
// index. GUI thread.
#pragma once

#include "backends/qt/views/QtDrawnButtons.h"

QT_BEGIN_NAMESPACE
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
  const char* buttonClass() const override { return names::headerButton; }

 private:
  QHeaderView& header() const;
};

}  // namespace tarni::qt
