#include "backends/qt/quick/QuickWebView.h"

#include <QtCore/QMetaMethod>
#include <QtQml/QJSEngine>
#include <QtQml/QQmlEngine>
#include <utility>

#include "platform/UIKit/Classes.h"

namespace tarni::qt {
namespace {

QMetaMethod methodNamed(const QObject& object, const char* name) {
  const QMetaObject* const all = object.metaObject();
  for (int i = 0; i < all->methodCount(); ++i) {
    if (all->method(i).name() == name) return all->method(i);
  }
  return {};
}

bool evaluate(QQuickItem* item, const QString& script, QtWebPage::Answered answered) {
  QJSEngine* const engine = item ? qmlEngine(item) : nullptr;
  if (!engine) return false;
  auto* const answer = new QuickScriptAnswer(*item, std::move(answered));
  const QJSValue callback = engine->newQObject(answer).property(QStringLiteral("take"));
  return QMetaObject::invokeMethod(item, "runJavaScript", Q_ARG(QString, script),
                                   Q_ARG(QJSValue, callback));
}

std::shared_ptr<QtWebPage> pageIn(QQuickItem& item) {
  const auto page = std::make_shared<QtWebPage>(
      [at = QPointer(&item)](const QString& script, QtWebPage::Answered answered) {
        return evaluate(at, script, std::move(answered));
      });
  // The item keeps it.
  new QuickPageEvents(item, page);
  return page;
}

}  // namespace

QuickPageEvents::QuickPageEvents(QQuickItem& item, std::shared_ptr<QtWebPage> page)
    : QObject(&item), page_(std::move(page)) {
  // The signals' arguments are of types of the engine's.
  connect(&item, methodNamed(item, "loadingChanged"), this,
          methodNamed(*this, "loadingHasChanged"));
  connect(&item, methodNamed(item, "renderProcessTerminated"), this,
          methodNamed(*this, "processHasEnded"));
  loadingHasChanged();
}

void QuickPageEvents::loadingHasChanged() {
  page_->setLoading(parent()->property("loading").toBool());
}

void QuickPageEvents::processHasEnded() {
  page_->processEnded();
}

void QuickScriptAnswer::take(const QJSValue& value) {
  const bool isText = value.isString() || value.isNumber() || value.isBool();
  answered_(isText ? value.toString() : QString());
  deleteLater();
}

QuickWebView::QuickWebView(QQuickItem& item, QuickKind kind)
    : QuickView(item, kind), page_(pageIn(item)) {}

platform::Class QuickWebView::getClass() const {
  const bool isUnseen = item() && !item()->isVisible();
  return isUnseen ? platform::uikit::UIView : QuickView::getClass();
}

platform::Task<std::string> QuickWebView::stringByEvaluatingJavaScriptFromString(
    std::string script) {
  const auto page = page_;
  co_return co_await page->evaluate(std::move(script));
}

}  // namespace tarni::qt
