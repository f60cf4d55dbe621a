#include "backends/qt/views/QtViewBase.h"

#include <QtCore/QLocale>
#include <QtWidgets/QWidget>
#include <cmath>

#include "backends/qt/drawing/BorderOverlay.h"
#include "backends/qt/drawing/QtImage.h"
#include "backends/qt/program/QtText.h"
#include "backends/qt/views/ViewRegistry.h"

namespace tarni::qt {

using platform::CGPoint;
using platform::CGRect;

platform::UIWindowRef QtViewBase::window() const {
  return windowOfWidget(widget());
}

QWindow* QtViewBase::nativeWindow() const {
  const QWidget* const drawing = widget();
  return drawing ? drawing->window()->windowHandle() : nullptr;
}

std::unique_ptr<QtBorder> QtViewBase::makeBorder() const {
  if (!widget()) return nullptr;
  const auto self = std::static_pointer_cast<const QtViewBase>(shared_from_this());
  return std::make_unique<WidgetBorder>([weak = std::weak_ptr(self)] {
    const std::shared_ptr<const QtViewBase> view = weak.lock();
    if (!view) return BorderedPart{};
    return BorderedPart{view->widget(), view->shape(), view->shownShape()};
  });
}

QRect QtViewBase::shownShape() const {
  const QWidget* const drawing = widget();
  const QRect all = shape();
  if (!drawing || !drawing->isVisible()) return all;
  QRect shown = all;
  QPoint origin;
  for (const QWidget* at = drawing; at; at = at->parentWidget()) {
    shown &= at->rect().translated(-origin);
    if (at->isWindow()) break;
    origin += at->pos();
  }
  return shown.isEmpty() ? QRect() : shown;
}

bool QtViewBase::canBeFound() const {
  const QWidget* at = widget();
  if (!at || !at->isVisible() || isHidden()) return false;
  // What lets the mouse through does so with everything in it.
  while (!at->testAttribute(Qt::WA_TransparentForMouseEvents)) {
    if (at->isWindow()) return true;
    at = at->parentWidget();
  }
  return at->isWindow();
}

CGRect QtViewBase::bounds() const {
  const QSize size = shownShape().size();
  return {{0, 0}, {static_cast<double>(size.width()), static_cast<double>(size.height())}};
}

CGPoint QtViewBase::convertPointToWindow(CGPoint point) const {
  const QPoint origin = originInWindow();
  return {point.x + origin.x(), point.y + origin.y()};
}

CGPoint QtViewBase::convertPointFromWindow(CGPoint point) const {
  const QPoint origin = originInWindow();
  return {point.x - origin.x(), point.y - origin.y()};
}

std::optional<std::string> QtViewBase::accessibilityLanguage() const {
  const QWidget* const drawing = widget();
  return drawing ? nonEmpty(drawing->locale().bcp47Name()) : std::nullopt;
}

platform::Task<platform::UIImageRef> QtViewBase::drawViewHierarchy() {
  QWidget* const drawing = widget();
  co_return drawing ? draw(*drawing, shownShape()) : nullptr;
}

QPoint QtViewBase::originInWindow() const {
  QPoint origin = shownShape().topLeft();
  for (const QWidget* at = widget(); at && !at->isWindow(); at = at->parentWidget()) {
    origin += at->pos();
  }
  return origin;
}

CGRect toCGRect(const QRect& rect) {
  return {{static_cast<double>(rect.x()), static_cast<double>(rect.y())},
          {static_cast<double>(rect.width()), static_cast<double>(rect.height())}};
}

QPoint toQPoint(CGPoint point) {
  return {static_cast<int>(std::floor(point.x)), static_cast<int>(std::floor(point.y))};
}

}  // namespace tarni::qt
