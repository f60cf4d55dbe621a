#include "backends/qt/quick/QuickExtension.h"

#include <QtQuick/QQuickWindow>

#include "backends/qt/quick/QuickRegistry.h"
#include "backends/qt/quick/QuickWindowView.h"

namespace tarni::qt {

platform::UIWindowRef QuickExtension::viewOfWindow(QWindow& window) {
  auto* const quick = qobject_cast<QQuickWindow*>(&window);
  return quick ? viewOfQuickWindow(*quick) : nullptr;
}

platform::UIViewRef QuickExtension::viewOfObject(QObject& object) {
  return viewOfItem(qobject_cast<QQuickItem*>(&object));
}

std::shared_ptr<QtView> QuickExtension::makeView(QWidget& widget) {
  return makeHostView(widget);
}

}  // namespace tarni::qt
