#include "backends/qt/QtAlerts.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QLabel>
#include <algorithm>

#include "backends/qt/ViewRegistry.h"
#include "platform/Platform.h"

namespace tarni::qt {
namespace {

constexpr int kMargin = 12;

class QtAlertView : public platform::UIAlertView {
 public:
  explicit QtAlertView(QLabel* label) : label_(label) {}

  void dismissWithClickedButtonIndex(long, bool) override {
    if (!label_) return;
    label_->hide();
    label_->deleteLater();
    label_ = nullptr;
  }

 private:
  QPointer<QLabel> label_;
};

QString alertText(const std::string& message, const std::optional<std::string>& cancel,
                  const std::optional<std::string>& other) {
  QString text = QString::fromStdString(message);
  for (const auto* const title : {&cancel, &other}) {
    if (*title) text += QStringLiteral("   [%1]").arg(QString::fromStdString(**title));
  }
  return text;
}

// Centred at the lower edge of the window, or of the screen when there is none.
void place(QLabel& label, const QWidget* window) {
  const QScreen* const screen = window && window->windowHandle() ? window->windowHandle()->screen()
                                                                 : QGuiApplication::primaryScreen();
  if (!screen) return;
  const QRect within =
      window ? QRect(window->mapToGlobal(QPoint()), window->size()) : screen->availableGeometry();
  label.setMaximumWidth(std::max(within.width() - 2 * kMargin, kMargin));
  label.adjustSize();
  label.move(within.center().x() - label.width() / 2, within.bottom() - label.height() - kMargin);
}

}  // namespace

std::shared_ptr<platform::UIAlertView> QtAlerts::show(std::string message,
                                                      std::optional<std::string> cancelButtonTitle,
                                                      std::optional<std::string> otherButtonTitle) {
  const QWidget* const window = widgetOfView(platform::current().application->keyWindow());
  auto* const label = new QLabel(alertText(message, cancelButtonTitle, otherButtonTitle), nullptr,
                                 Qt::ToolTip | Qt::FramelessWindowHint |
                                     Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus);
  hideFromWalks(label);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setMargin(kMargin);
  label->setAttribute(Qt::WA_ShowWithoutActivating);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  label->setAttribute(Qt::WA_QuitOnClose, false);
  label->setAttribute(Qt::WA_DeleteOnClose);
  place(*label, window);
  label->winId();
  if (window) label->windowHandle()->setTransientParent(window->window()->windowHandle());
  label->show();
  return std::make_shared<QtAlertView>(label);
}

}  // namespace tarni::qt
