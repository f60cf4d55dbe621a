#include "backends/qt/quick/QuickWindowView.h"

#include <dlfcn.h>

#include <QtCore/QLocale>
#include <QtWidgets/QWidget>

#include "backends/qt/program/QtText.h"
#include "backends/qt/quick/QmlOrigin.h"
#include "backends/qt/quick/QuickBorder.h"
#include "backends/qt/quick/QuickImage.h"
#include "backends/qt/quick/QuickRegistry.h"
#include "backends/qt/quick/QuickScene.h"
#include "backends/qt/quick/QuickTree.h"

class QQuickWidget;

namespace tarni::qt {
namespace {

using platform::UIViewRef;

UIViewRef viewAt(QQuickWindow& scene, QPointF point) {
  return viewOfItem(itemAt(*scene.contentItem(), point));
}

// The scene that a QQuickWidget draws. Asked through the library that the widget comes from, which
// not every program with Qt Quick has.
QQuickWindow* sceneOfQuickWidget(const QWidget& widget) {
  using QuickWindow = QQuickWindow* (*)(const QWidget*);
  static const auto ask = [] {
    const char* const library =
        "libQt" QT_STRINGIFY(QT_VERSION_MAJOR) "QuickWidgets.so." QT_STRINGIFY(QT_VERSION_MAJOR);
    void* const mapped = dlopen(library, RTLD_NOLOAD | RTLD_LAZY);
    return mapped
               ? reinterpret_cast<QuickWindow>(dlsym(mapped, "_ZNK12QQuickWidget11quickWindowEv"))
               : nullptr;
  }();
  return ask ? ask(&widget) : nullptr;
}

// A container places its window exactly over itself.
QQuickWindow* sceneInContainer(const QWidget& container) {
  const QWindow* const topLevel = container.window()->windowHandle();
  if (!topLevel) return nullptr;
  const QRect place(container.mapTo(container.window(), QPoint()), container.size());
  for (QObject* const child : topLevel->children()) {
    auto* const window = qobject_cast<QQuickWindow*>(child);
    if (window && window->geometry() == place) return window;
  }
  return nullptr;
}

}  // namespace

// -------------------------------------------------------------------------------- QuickWindowView

QuickWindowView::QuickWindowView(QQuickWindow& window)
    : window_(&window), class_(classOfWindow(window)) {}

std::unique_ptr<QtBorder> QuickWindowView::makeBorder() const {
  if (!window_) return nullptr;
  return std::make_unique<QuickBorder>(*window_->contentItem());
}

std::span<const UIViewRef> QuickWindowView::subviews() const {
  return renewSubviews(subviews_, window_ ? window_->contentItem() : nullptr);
}

platform::UIWindowRef QuickWindowView::window() const {
  return window_ ? std::const_pointer_cast<UIView>(shared_from_this()) : nullptr;
}

platform::CGRect QuickWindowView::bounds() const {
  return {{0, 0}, frame().size};
}

platform::CGRect QuickWindowView::frame() const {
  if (!window_) return {};
  const QRect place(window_->mapToGlobal(QPoint()), window_->size());
  return {{double(place.x()), double(place.y())}, {double(place.width()), double(place.height())}};
}

UIViewRef QuickWindowView::hitTest(platform::CGPoint point) const {
  if (isHidden() || !bounds().contains(point)) return nullptr;
  const UIViewRef met = viewAt(*window_, {point.x, point.y});
  return met ? met : window();
}

platform::Task<void> QuickWindowView::becomeFirstResponder() {
  co_return;
}

std::optional<std::string> QuickWindowView::accessibilityIdentifier() const {
  if (!window_) return std::nullopt;
  return nonEmpty(window_->objectName().isEmpty() ? idOf(*window_) : window_->objectName());
}

std::optional<std::string> QuickWindowView::accessibilityLanguage() const {
  return window_ ? nonEmpty(QLocale().bcp47Name()) : std::nullopt;
}

std::optional<std::string> QuickWindowView::accessibilityLabel() const {
  return window_ ? nonEmpty(window_->title()) : std::nullopt;
}

platform::Task<platform::UIImageRef> QuickWindowView::drawViewHierarchy() {
  if (!window_) co_return nullptr;
  co_return co_await drawScene(*window_, QRectF({}, window_->size()));
}

// ---------------------------------------------------------------------------------- QuickHostView

void QuickHostView::appendParts(std::vector<UIViewRef>& views) const {
  QQuickWindow* const shown = scene();
  const auto items = renewSubviews(items_, shown ? shown->contentItem() : nullptr);
  views.insert(views.end(), items.begin(), items.end());
}

UIViewRef QuickHostView::partAt(const QPoint& point) const {
  QQuickWindow* const shown = scene();
  return shown ? viewAt(*shown, point) : nullptr;
}

QQuickWindow* QuickHostView::scene() const {
  QWidget& host = *widget();
  QQuickWindow* const shown =
      host.inherits("QQuickWidget") ? sceneOfQuickWidget(host) : sceneInContainer(host);
  if (shown) setSceneHost(*shown, host);
  return shown;
}

std::shared_ptr<QtView> makeHostView(QWidget& widget) {
  // The engine draws pages in such a widget of its own.
  if (kindOfWidget(widget) == Kind::WebDocument) return nullptr;
  if (!widget.inherits("QQuickWidget") && !widget.inherits("QWindowContainer")) return nullptr;
  return std::make_shared<QuickHostView>(widget, Kind::View);
}

}  // namespace tarni::qt
