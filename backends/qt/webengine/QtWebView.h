// QtWebView: the view of a QWebEngineView. GUI thread.
#pragma once

#include <QtWebEngineWidgets/QWebEngineView>
#include <memory>

#include "backends/qt/QtView.h"
#include "backends/qt/web/QtWebPage.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::qt {

class QtWebView final : public QtView, public platform::UIWebView {
 public:
  explicit QtWebView(QWebEngineView& widget);

  bool isLoading() const override { return page_->isLoading(); }
  platform::Task<std::string> stringByEvaluatingJavaScriptFromString(std::string script) override;

 private:
  const std::shared_ptr<QtWebPage> page_;
};

}  // namespace tarni::qt
