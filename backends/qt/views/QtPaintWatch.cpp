#include "backends/qt/views/QtPaintWatch.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

#include "backends/qt/views/ViewRegistry.h"
#include "platform/Foundation/Guarded.h"

namespace tarni::qt {
namespace {

// Null for what is not a window.
QWindow* windowOf(QObject& receiver) {
  if (receiver.isWindowType()) return static_cast<QWindow*>(&receiver);
  if (!receiver.isWidgetType()) return nullptr;
  const auto& widget = static_cast<const QWidget&>(receiver);
  return widget.isWindow() ? widget.windowHandle() : nullptr;
}

class PaintWatch : public QObject {
 public:
  explicit PaintWatch(platform::PaintObserver& observer) : observer_(observer) {}

  // A widget's paint events would tell of the agent's own pictures as well: what makes a window
  // paint is asked for by an event to the window.
  bool eventFilter(QObject* receiver, QEvent* event) override {
    switch (event->type()) {
      case QEvent::UpdateRequest:
      case QEvent::Expose:
      case QEvent::WindowTitleChange:
        tell(*receiver, false);
        break;
      case QEvent::Show:
      case QEvent::Hide:
        tell(*receiver, true);
        break;
      default:
        break;
    }
    return false;
  }

 private:
  void tell(QObject& receiver, bool isOther) {
    QWindow* const native = topLevelOf(windowOf(receiver));
    if (!native) return;
    platform::runGuarded("paint observer", [&] {
      const platform::UIWindowRef window = isOther ? nullptr : viewOfWindow(native);
      if (window || isOther) observer_.paints(window);
    });
  }

  platform::PaintObserver& observer_;
};

}  // namespace

void observePainting(platform::PaintObserver* observer) {
  static PaintWatch* watch = nullptr;
  delete std::exchange(watch, observer ? new PaintWatch(*observer) : nullptr);
  QCoreApplication* const application = QCoreApplication::instance();
  if (watch && application) application->installEventFilter(watch);
}

}  // namespace tarni::qt
