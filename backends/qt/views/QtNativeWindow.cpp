#include "backends/qt/views/QtNativeWindow.h"

#include <qpa/qwindowsysteminterface.h>
#include <QtCore/QPointer>
#include <QtGui/QWindow>
#include <cmath>

#include "backends/qt/program/InputQueue.h"
#include "backends/qt/program/QtText.h"

namespace tarni::qt {

std::optional<std::string> QtNativeWindow::windowTitle() const {
  const QWindow* const window = ownWindow();
  return window ? nonEmpty(window->title()) : std::nullopt;
}

bool QtNativeWindow::isModal() const {
  const QWindow* const window = ownWindow();
  return window && window->modality() != Qt::NonModal;
}

bool QtNativeWindow::isPopup() const {
  const QWindow* const window = ownWindow();
  return window && window->type() == Qt::Popup;
}

platform::Task<void> QtNativeWindow::resize(platform::CGSize size) {
  const QSize asked(static_cast<int>(std::lround(size.width)),
                    static_cast<int>(std::lround(size.height)));
  return performAsInput([window = QPointer(ownWindow()), asked] {
    if (!window) return;
    window->resize(asked.expandedTo(window->minimumSize()).boundedTo(window->maximumSize()));
  });
}

platform::Task<void> QtNativeWindow::close() {
  return performAsInput([window = QPointer(ownWindow())] {
    using Interface = QWindowSystemInterface;
    if (window) Interface::handleCloseEvent<Interface::SynchronousDelivery>(window);
  });
}

}  // namespace tarni::qt
