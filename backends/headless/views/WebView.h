// WebView: a UIWebView without an engine. Whoever uses it says what scripts answer; it remembers
// what was evaluated and where its page was tapped. Main thread.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "backends/headless/views/ScrollView.h"

namespace tarni::headless {

// The UIWebBrowserView in a web view.
class WebBrowserView : public View, public platform::UIWebBrowserView {
 public:
  WebBrowserView();

  platform::Task<void> tapInteractionWithLocation(platform::CGPoint point) override;
  // In the order in which they came, in own coordinates.
  const std::deque<platform::CGPoint>& taps() const { return taps_; }

 private:
  std::deque<platform::CGPoint> taps_;
};

// Its browser view stands in a scroll view (_UIWebViewScrollView), and is reached over the instance
// variables "_internal" and "browserView" as well.
class WebView : public View, public platform::UIWebView {
 public:
  // Gives the script's result; may throw NSException.
  using Engine = std::function<std::string(const std::string& script)>;

  explicit WebView(platform::Class cls = platform::uikit::UIWebView);

  bool isLoading() const override { return loading_; }
  void setLoading(bool loading) { loading_ = loading; }
  bool passesPresses() const override { return false; }
  platform::Task<std::string> stringByEvaluatingJavaScriptFromString(std::string script) override;
  // The answer to exactly this script; goes before the engine.
  void setAnswer(std::string script, std::string answer);
  // Answers all other scripts. Without one they answer nothing.
  void setEngine(Engine engine) { engine_ = std::move(engine); }
  const std::deque<std::string>& evaluatedScripts() const { return evaluated_; }
  const std::shared_ptr<WebBrowserView>& browserView() const { return browserView_; }

 protected:
  void layoutSubviews() override;

 private:
  bool loading_ = false;
  std::map<std::string, std::string> answers_;
  Engine engine_;
  std::deque<std::string> evaluated_;
  std::shared_ptr<ScrollView> scrollView_;
  std::shared_ptr<WebBrowserView> browserView_;
};

}  // namespace tarni::headless
