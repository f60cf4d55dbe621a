// QuickWebView: the view of a WebEngineView. The engine is reached by name, so that programs of Qt
// Quick without one do not meet it. GUI thread.
#pragma once

#include <QtQml/QJSValue>
#include <functional>
#include <memory>

#include "backends/qt/quick/QuickView.h"
#include "backends/qt/web/QtWebPage.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::qt {

// Receives what the engine says of one page; goes with the item.
class QuickPageEvents : public QObject {
  Q_OBJECT

 public:
  QuickPageEvents(QQuickItem& item, std::shared_ptr<QtWebPage> page);

 public Q_SLOTS:
  void loadingHasChanged();
  void processHasEnded();

 private:
  const std::shared_ptr<QtWebPage> page_;
};

// Receives the value of one script; goes with the item, if not before.
class QuickScriptAnswer : public QObject {
  Q_OBJECT

 public:
  QuickScriptAnswer(QQuickItem& item, QtWebPage::Answered answered)
      : QObject(&item), answered_(std::move(answered)) {}

 public Q_SLOTS:
  void take(const QJSValue& value);

 private:
  const QtWebPage::Answered answered_;
};

class QuickWebView final : public QuickView, public platform::UIWebView {
 public:
  QuickWebView(QQuickItem& item, QuickKind kind);

  // A page that nobody sees, as in a tab that is not open, is not a web view: the agent works with
  // the first there is.
  platform::Class getClass() const override;
  bool isLoading() const override { return page_->isLoading(); }
  bool isSilent() const override { return page_->isSilent(); }
  platform::Task<std::string> stringByEvaluatingJavaScriptFromString(std::string script) override;

 private:
  const std::shared_ptr<QtWebPage> page_;
};

}  // namespace tarni::qt
