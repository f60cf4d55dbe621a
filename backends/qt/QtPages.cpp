#include "backends/qt/QtPages.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QWizard>

#include "backends/qt/QtPlatform.h"

namespace tarni::qt {
namespace {

// The page is laid out by events that are posted by now. The application receives the call, since
// the widget with the pages may go before.
void turnPage(const QWidget& widget) {
  if (!widget.isVisible()) return;
  eventDispatch().viewWillAppear();
  QMetaObject::invokeMethod(
      QCoreApplication::instance(), [] { eventDispatch().viewDidAppear(); }, Qt::QueuedConnection);
}

}  // namespace

void watchPages(QWidget& widget) {
  if (auto* const stack = qobject_cast<QStackedWidget*>(&widget)) {
    QObject::connect(stack, &QStackedWidget::currentChanged, stack, [stack] { turnPage(*stack); });
  } else if (auto* const wizard = qobject_cast<QWizard*>(&widget)) {
    QObject::connect(wizard, &QWizard::currentIdChanged, wizard, [wizard] { turnPage(*wizard); });
  }
}

}  // namespace tarni::qt
