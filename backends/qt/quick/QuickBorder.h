// QuickBorder: draws the border of one view's layer, above everything else in the view's scene.
//
// It is an item of the agent's own that takes no touches and stands in no walk. It follows its view
// by looking where it is a few times a second; it is up for a second or so. GUI thread.
#pragma once

#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>

#include "backends/qt/views/QtLayer.h"

namespace tarni::qt {

class QuickBorderItem;

class QuickBorder final : public QtBorder {
 public:
  explicit QuickBorder(QQuickItem& item) : item_(&item) {}
  ~QuickBorder() override;

  void setBorder(double width, const platform::CGColor& color) override;

 private:
  const QPointer<QQuickItem> item_;
  QPointer<QuickBorderItem> border_;
};

}  // namespace tarni::qt
