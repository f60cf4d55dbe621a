#include "backends/qt/drawing/QtTransaction.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace tarni::qt {

void QtTransaction::flush() {
  // Painting is the program's code and may close windows.
  QList<QPointer<QWidget>> windows;
  for (QWidget* const window : QApplication::topLevelWidgets()) windows.append(window);
  for (const QPointer<QWidget>& window : windows) {
    if (window && window->isVisible()) {
      QCoreApplication::sendPostedEvents(window, QEvent::UpdateRequest);
    }
  }
}

}  // namespace tarni::qt
