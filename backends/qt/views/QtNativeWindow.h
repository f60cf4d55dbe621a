// QtNativeWindow: what a view of the kind UIWindow does by its window of the window system. A view
// that stands in a window has none and does nothing. GUI thread.
#pragma once

#include <QtCore/qglobal.h>

#include "platform/UIKit/UIWindow.h"

QT_BEGIN_NAMESPACE
class QWindow;
QT_END_NAMESPACE

namespace tarni::qt {

class QtNativeWindow : public platform::UIWindow {
 public:
  std::optional<std::string> windowTitle() const final;
  bool isModal() const final;
  bool isPopup() const final;
  // Within the least and the greatest size that the program set.
  platform::Task<void> resize(platform::CGSize size) final;
  platform::Task<void> close() final;

 protected:
  // Null when the view is not a window of its own.
  virtual QWindow* ownWindow() const = 0;
};

}  // namespace tarni::qt
