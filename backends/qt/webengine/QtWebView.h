// QtWebView: the view of a QWebEngineView. One that is a window of its own is a view of the kind
// UIWindow, as all windows are; the web view then stands in it as its part. GUI thread.
#pragma once

#include <QtWebEngineWidgets/QWebEngineView>
#include <memory>

#include "backends/qt/views/QtPart.h"
#include "backends/qt/views/QtView.h"
#include "backends/qt/web/QtWebPage.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::qt {

// The whole of a web view that is a window.
class QtWebPart final : public QtPart, public platform::UIWebView {
 public:
  QtWebPart(std::weak_ptr<const QtView> owner, platform::Class partClass,
            std::shared_ptr<QtWebPage> page)
      : QtPart(std::move(owner), partClass), page_(std::move(page)) {}

  QRect shape() const override;
  bool isUserInteractionEnabled() const override;
  std::optional<std::string> accessibilityValue() const override { return std::nullopt; }
  std::optional<std::string> accessibilityLabel() const override { return std::nullopt; }
  std::optional<std::string> accessibilityHint() const override { return std::nullopt; }

  bool isLoading() const override { return page_->isLoading(); }
  bool isSilent() const override { return page_->isSilent(); }
  platform::Task<std::string> stringByEvaluatingJavaScriptFromString(std::string script) override;

 protected:
  bool exists() const override;

 private:
  const std::shared_ptr<QtWebPage> page_;
};

class QtWebView final : public QtView, public platform::UIWebView {
 public:
  explicit QtWebView(QWebEngineView& widget);

  bool isLoading() const override { return page_->isLoading(); }
  bool isSilent() const override { return page_->isSilent(); }
  platform::Task<std::string> stringByEvaluatingJavaScriptFromString(std::string script) override;

 protected:
  void appendParts(std::vector<platform::UIViewRef>& views) const override;
  // A page that nobody sees, as in a tab that is not open, is not a web view: the agent works with
  // the first there is.
  Kind kind() const override { return widget()->isVisible() ? Kind::WebView : Kind::View; }

 private:
  const std::shared_ptr<QtWebPage> page_;
  mutable std::shared_ptr<QtWebPart> part_;
};

}  // namespace tarni::qt
