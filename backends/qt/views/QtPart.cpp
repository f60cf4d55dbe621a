#include "backends/qt/views/QtPart.h"

namespace tarni::qt {

QWidget* QtPart::widget() const {
  const std::shared_ptr<const QtView> view = owner();
  QWidget* const drawing = view ? view->widget() : nullptr;
  return drawing && exists() ? drawing : nullptr;
}

platform::UIViewRef QtPart::superview() const {
  return widget() ? std::const_pointer_cast<QtView>(owner_.lock()) : nullptr;
}

platform::CGRect QtPart::frame() const {
  const std::shared_ptr<const QtView> above = owner();
  return above ? toCGRect(shownShape().translated(-above->shownShape().topLeft()))
               : platform::CGRect{};
}

platform::UIViewRef QtPart::hitTest(platform::CGPoint point) const {
  const QWidget* const drawing = widget();
  if (!drawing || !drawing->isVisible() || !bounds().contains(point)) return nullptr;
  return std::const_pointer_cast<UIView>(shared_from_this());
}

platform::Task<void> QtPart::becomeFirstResponder() {
  co_return;
}

}  // namespace tarni::qt
