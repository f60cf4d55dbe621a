#include "backends/qt/QtAlerts.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtGui/QRasterWindow>
#include <QtGui/QScreen>
#include <algorithm>

#include "backends/qt/input/NativeWindows.h"
#include "backends/qt/views/ViewRegistry.h"
#include "platform/Platform.h"

namespace tarni::qt {
namespace {

constexpr int kMargin = 12;

// No widget, since a program of Qt Quick may have none.
class AlertWindow final : public QRasterWindow {
 public:
  explicit AlertWindow(QString text) : text_(std::move(text)) {
    setFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
  }

  // Centred at the lower edge of the window, or of the screen when there is none.
  void placeOver(QWindow* window) {
    const QScreen* const screen = window ? window->screen() : QGuiApplication::primaryScreen();
    if (!screen) return;
    const QRect within =
        window ? QRect(window->mapToGlobal(QPoint()), window->size()) : screen->availableGeometry();
    const int widest = std::max(within.width() - 4 * kMargin, kMargin);
    const QRect text = QFontMetrics(QGuiApplication::font())
                           .boundingRect(QRect(0, 0, widest, within.height()), kTextFlags, text_);
    QRect place = text.marginsAdded({kMargin, kMargin, kMargin, kMargin});
    place.moveCenter(within.center());
    place.moveBottom(within.bottom() - kMargin);
    setTransientParent(window);
    setGeometry(place);
  }

  // Once it is shown: under X11 a window forgets it otherwise. On Wayland Qt knows nothing of the
  // flag, and tells the compositor of the mask as the part that takes input: none of the window.
  void letInputThrough() {
    setFlag(Qt::WindowTransparentForInput);
    if (isOnWayland()) {
      setMask(QRect(QPoint(), QSize(1, 1)).translated(-1, -1));
    }
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    const QPalette colors = QGuiApplication::palette();
    QPainter painter(this);
    const QRect all(QPoint(), size());
    painter.fillRect(all, colors.color(QPalette::ToolTipBase));
    painter.setPen(colors.color(QPalette::ToolTipText));
    painter.drawText(all.marginsRemoved({kMargin, kMargin, kMargin, kMargin}), kTextFlags, text_);
  }

 private:
  static constexpr int kTextFlags = int{Qt::TextWordWrap} | int{Qt::AlignCenter};

  const QString text_;
};

class QtAlertView : public platform::UIAlertView {
 public:
  explicit QtAlertView(QWindow* window) : window_(window) {}

  void dismissWithClickedButtonIndex(long, bool) override {
    if (!window_) return;
    window_->hide();
    window_->deleteLater();
    window_ = nullptr;
  }

 private:
  QPointer<QWindow> window_;
};

QString alertText(const std::string& message, const std::optional<std::string>& cancel,
                  const std::optional<std::string>& other) {
  QString text = QString::fromStdString(message);
  for (const auto* const title : {&cancel, &other}) {
    if (*title) text += QStringLiteral("   [%1]").arg(QString::fromStdString(**title));
  }
  return text;
}

}  // namespace

std::shared_ptr<platform::UIAlertView> QtAlerts::show(std::string message,
                                                      std::optional<std::string> cancelButtonTitle,
                                                      std::optional<std::string> otherButtonTitle) {
  auto* const alert = new AlertWindow(alertText(message, cancelButtonTitle, otherButtonTitle));
  alert->placeOver(nativeWindowOf(platform::current().application->keyWindow()));
  alert->show();
  alert->letInputThrough();
  return std::make_shared<QtAlertView>(alert);
}

}  // namespace tarni::qt
