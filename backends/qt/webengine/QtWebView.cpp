#include "backends/qt/webengine/QtWebView.h"

#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtWebEngineWidgets/QWebEngineView>
#include <utility>

namespace tarni::qt {
namespace {

bool isLoadingNow([[maybe_unused]] const QWebEngineView& view) {
#if QT_VERSION_MAJOR > 5
  return view.page()->isLoading();
#else
  return false;  // it does not say; its signals do from now on
#endif
}

std::shared_ptr<QtWebPage> pageIn(QWebEngineView& view) {
  const auto evaluate = [at = QPointer<QWebEngineView>(&view)](const QString& script,
                                                               QtWebPage::Answered answered) {
    if (!at) return false;
    at->page()->runJavaScript(script, [answered = std::move(answered)](const QVariant& value) {
      answered(value.toString());
    });
    return true;
  };
  const auto page = std::make_shared<QtWebPage>(evaluate);
  page->setLoading(isLoadingNow(view));
  QObject::connect(&view, &QWebEngineView::loadStarted, &view, [page] { page->setLoading(true); });
  QObject::connect(&view, &QWebEngineView::loadFinished, &view,
                   [page] { page->setLoading(false); });
  QObject::connect(&view, &QWebEngineView::renderProcessTerminated, &view,
                   [page] { page->processEnded(); });
  return page;
}

}  // namespace

QRect QtWebPart::shape() const {
  const auto view = owner();
  return view ? view->shape() : QRect();
}

bool QtWebPart::isUserInteractionEnabled() const {
  const auto view = owner();
  return view && view->isUserInteractionEnabled();
}

bool QtWebPart::exists() const {
  return owner()->widget()->isWindow();
}

platform::Task<std::string> QtWebPart::stringByEvaluatingJavaScriptFromString(std::string script) {
  const auto page = page_;
  co_return co_await page->evaluate(std::move(script));
}

QtWebView::QtWebView(QWebEngineView& widget)
    : QtView(widget, Kind::WebView), page_(pageIn(widget)) {}

platform::Task<std::string> QtWebView::stringByEvaluatingJavaScriptFromString(std::string script) {
  const auto page = page_;
  co_return co_await page->evaluate(std::move(script));
}

void QtWebView::appendParts(std::vector<platform::UIViewRef>& views) const {
  if (!widget()->isWindow()) return;
  if (!part_) {
    const auto self = std::static_pointer_cast<const QtView>(shared_from_this());
    part_ =
        std::make_shared<QtWebPart>(self, classFor(widget()->metaObject(), Kind::WebView), page_);
  }
  views.push_back(part_);
}

}  // namespace tarni::qt
