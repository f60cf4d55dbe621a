// The views of scroll areas and of text edits, which scroll too. GUI thread.
#pragma once

#include "backends/qt/views/QtView.h"
#include "platform/UIKit/UIControls.h"

QT_BEGIN_NAMESPACE
class QAbstractScrollArea;
class QScrollBar;
QT_END_NAMESPACE

namespace tarni::qt {

// Offsets are in points. Where the scroll bar counts rows or lines, a step is as many points as the
// visible ones are high on average.
class QtScrollView : public QtView, public platform::UIScrollView {
 public:
  using QtView::QtView;
  platform::CGPoint contentOffset() const override;
  // Moves at once, as far as there is content.
  platform::Task<void> setContentOffset(platform::CGPoint offset, bool animated) override;

 protected:
  QAbstractScrollArea* area() const;
  const QWidget* transparentChild() const override;
  // True when that scroll bar counts rows, columns or lines, not points.
  virtual bool scrollsPerItem(Qt::Orientation) const { return false; }

 private:
  double pointsAStep(const QScrollBar& bar) const;
};

class QtTextView final : public QtScrollView, public platform::UITextView {
 public:
  using QtScrollView::QtScrollView;
  std::optional<std::string> textViewText() const override;

 protected:
  bool scrollsPerItem(Qt::Orientation orientation) const override;
};

}  // namespace tarni::qt
