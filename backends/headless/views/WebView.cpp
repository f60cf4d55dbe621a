#include "backends/headless/views/WebView.h"

#include "backends/headless/History.h"

namespace tarni::headless {
namespace {

platform::Class classNamed(const char* name, platform::Class superclass) {
  return platform::defineClass(name, superclass);
}

}  // namespace

WebBrowserView::WebBrowserView() : View(classNamed("UIWebBrowserView", platform::uikit::UIView)) {}

platform::Task<void> WebBrowserView::tapInteractionWithLocation(platform::CGPoint point) {
  remember(taps_, point);
  co_return;
}

WebView::WebView(platform::Class cls)
    : View(cls),
      scrollView_(std::make_shared<ScrollView>(
          classNamed("_UIWebViewScrollView", platform::uikit::UIScrollView))),
      browserView_(std::make_shared<WebBrowserView>()) {
  const auto internal =
      std::make_shared<View>(classNamed("UIWebViewInternal", platform::uikit::NSObject));
  internal->setInstanceVariable(browserView_, "browserView");
  setInstanceVariable(internal, "_internal");
  scrollView_->addSubview(browserView_);
  addSubview(scrollView_);
}

platform::Task<std::string> WebView::stringByEvaluatingJavaScriptFromString(std::string script) {
  remember(evaluated_, script);
  const auto answer = answers_.find(script);
  if (answer != answers_.end()) co_return answer->second;
  if (!engine_) co_return std::string();
  co_return engine_(script);
}

void WebView::setAnswer(std::string script, std::string answer) {
  answers_.insert_or_assign(std::move(script), std::move(answer));
}

void WebView::layoutSubviews() {
  const platform::CGRect whole{{0, 0}, bounds().size};
  scrollView_->setFrame(whole);
  browserView_->setFrame(whole);
}

}  // namespace tarni::headless
