// WebView: puts the page scripts into the web view on screen and talks to them. Stateless. Main
// thread, unless said otherwise.
#pragma once

#include <string>

#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

// The address of the folder that the page scripts are fetched from, without a slash at its end.
// Written before the agent is loaded, or on the main thread.
[[gnu::visibility("default")]] extern std::string REMOTE_CDN_URL;

class WebView {
 public:
  // Hands in what sends the steps that wait for the sender. Once, at start-up.
  static void setSender(void (*send)());

  // Queues one pass on the main queue: collects the steps of a page that has the scripts, gives
  // them to one that has not. Any thread. Does nothing while the pass before it still waits.
  void performRecorderAndPlaybackInjection();

  // Queues one pass on the main queue that takes all steps out of the page, the text that a person
  // is still typing among them, so that they go to the host tool before the step of a touch outside
  // the page that is about to be made. Any thread.
  void collectStepsBeforeTouch();

  // Whose acts follow. What a page sees of the agent's own input looks like a person's: the pages
  // with scripts are told not to record it, and the next event of a person's takes that back. The
  // first ends once they know; pages that come later are told with their scripts.
  platform::Task<void> ownActsFollow();
  void ownActsEnd();
  void personActs();

  // The first web view of the current window; null when there is none.
  platform::UIViewRef getCurrentDisplayedWebView();
  // True once the scripts are in the page.
  platform::Task<bool> checkWebViewIsAlreadyHacked(platform::UIViewRef webView);
  platform::Task<void> injectJSFile(platform::UIViewRef webView, std::string fileName);
  // The text of a script file; empty when it cannot be read.
  platform::Task<std::string> getRemoteFileContent(std::string fileName);

  // Evaluates a call in the page and answers its result as text, empty when there is none.
  // NSException when the page is gone.
  platform::Task<std::string> callJavaScriptFunction(platform::UIViewRef webView, std::string call);
  platform::Task<void> callJavaScriptFunctionWithoutOutPut(platform::UIViewRef webView,
                                                           std::string call);

  // Tell the scripts of the web view on screen, if there is one. What fails ends in the log.
  platform::Task<void> switchToSpyMode();
  platform::Task<void> switchToRecorderMode();
};

}  // namespace tarni
