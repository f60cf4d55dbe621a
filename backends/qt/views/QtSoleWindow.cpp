#include "backends/qt/views/QtSoleWindow.h"

#include "backends/qt/program/QtText.h"
#include "backends/qt/views/ViewRegistry.h"
#include "platform/UIKit/Classes.h"

namespace tarni::qt {

platform::Class QtSoleWindow::getClass() const {
  return platform::uikit::UIWindow;
}

std::span<const platform::UIViewRef> QtSoleWindow::subviews() const {
  content_[0] = viewOfWidget(widget_);
  return content_[0] ? content_ : std::span<const platform::UIViewRef>();
}

platform::CGRect QtSoleWindow::frame() const {
  if (!widget_) return {};
  const QRect own = shownShape();
  return toCGRect({widget_->mapToGlobal(own.topLeft()), own.size()});
}

platform::UIViewRef QtSoleWindow::hitTest(platform::CGPoint point) const {
  if (isHidden() || !bounds().contains(point)) return nullptr;
  const platform::UIViewRef content = viewOfWidget(widget_);
  const platform::UIViewRef hit =
      content ? content->hitTest(content->convertPointFromWindow(point)) : nullptr;
  return hit ? hit : std::const_pointer_cast<UIView>(shared_from_this());
}

bool QtSoleWindow::isOpaque() const {
  return widget_ && !widget_->testAttribute(Qt::WA_TranslucentBackground);
}

platform::Task<void> QtSoleWindow::becomeFirstResponder() {
  co_return;
}

std::optional<std::string> QtSoleWindow::accessibilityLabel() const {
  return widget_ ? nonEmpty(widget_->windowTitle()) : std::nullopt;
}

}  // namespace tarni::qt
