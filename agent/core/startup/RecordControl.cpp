#include "agent/core/startup/RecordControl.h"

#include <chrono>

#include "agent/Queue/ElementsQueue.h"
#include "agent/WebView/WebView.h"
#include "agent/core/startup/TcpChannel.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/recording/RecorderWorker.h"
#include "agent/recording/TypedText.h"
#include "agent/session/Channel.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni {
namespace {

constexpr double kTickInterval = 0.2;  // seconds
constexpr auto kTimeToEnd = std::chrono::milliseconds(200);

// Gives new views their identities. False when there is no key window. Main thread.
bool walkKeyWindow() {
  const platform::UIWindowRef window = platform::current().application->keyWindow();
  if (!window) return false;
  GlobalVars::sharedInstance().set_uiWindow(window);
  UIViewsManager manager;
  manager.GetAllViews(window, true);
  TypedText::sharedInstance().follow();
  return true;
}

// False once the application's event loop is gone.
bool tick() {
  if (GlobalVars::isTrue(GlobalVars::sharedInstance()._isPlaybackStarted())) {
    WebView().performRecorderAndPlaybackInjection();
    return true;
  }
  bool hasWindow = false;
  if (!platform::current().dispatch->mainQueue().sync([&] { hasWindow = walkKeyWindow(); })) {
    return false;
  }
  if (hasWindow) {
    WebView().performRecorderAndPlaybackInjection();
  } else {
    platform::NSLog("WINDOW IS NULL");
  }
  return true;
}

// What lower rooms call without knowing whom.
void handIn() {
  ElementsQueue::sharedInstance().setWorker([] { return RecorderWorker::sharedInstance().run(); });
  WebView::setSender(TcpChannel::sendPendingSteps);
}

void tickAndRearm() {
  bool goesOn = true;
  try {
    goesOn = tick();
  } catch (...) {
    platform::logFailure("Polling hook");
  }
  if (goesOn) RecordControl::dispatchHook();
}

}  // namespace

void RecordControl::load() {
  handIn();
  ElementsQueue::sharedInstance().startRecorderActionThread();
  TcpChannel().start();
  GlobalVars::sharedInstance().set_spyMode("false");
  GlobalVars::sharedInstance().set_viewControllerLoaded("LOADED");
  dispatchHook();
}

void RecordControl::dispatchHook() {
  platform::Dispatch& dispatch = *platform::current().dispatch;
  dispatch.after(kTickInterval, dispatch.backgroundQueue(), tickAndRearm);
}

// A tap that ends the application leaves the worker and the sender loop no time for its step.
void RecordControl::applicationWillTerminate() noexcept {
  session::finish();
  const auto deadline = std::chrono::steady_clock::now() + kTimeToEnd;
  try {
    if (GlobalVars::isTrue(GlobalVars::sharedInstance()._isPlaybackStarted())) return;
    RecorderWorker::sharedInstance().finish(deadline);
    TcpChannel::sendLastSteps(deadline);
  } catch (...) {
    platform::logFailure("Sending the last steps failed");
  }
}

}  // namespace tarni
