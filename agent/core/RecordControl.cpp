#include "agent/core/RecordControl.h"

#include <exception>

#include "agent/Queue/ElementsQueue.h"
#include "agent/WebView/WebView.h"
#include "agent/core/GlobalVars.h"
#include "agent/core/TcpChannel.h"
#include "agent/diagnostics/Errors.h"
#include "agent/elements/UIViewsManager.h"
#include "platform/Platform.h"

namespace tarni {
namespace {

constexpr double tickInterval = 0.2;  // seconds

// Gives new views their identities. False when there is no key window. Main thread.
bool walkKeyWindow() {
  const platform::UIWindowRef window = platform::current().application->keyWindow();
  if (!window) return false;
  GlobalVars::sharedInstance().set_uiWindow(window);
  UIViewsManager manager;
  manager.GetAllViews(window, true);
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

void tickAndRearm() {
  bool goesOn = true;
  try {
    goesOn = tick();
  } catch (...) {
    Diagnostics::logCurrentException("Polling hook");
  }
  if (goesOn) RecordControl::dispatchHook();
}

}  // namespace

void RecordControl::load() {
  ElementsQueue::sharedInstance().startRecorderActionThread();
  TcpChannel().start();
  GlobalVars::sharedInstance().set_spyMode("false");
  GlobalVars::sharedInstance().set_viewControllerLoaded("LOADED");
  dispatchHook();
}

void RecordControl::dispatchHook() {
  platform::Dispatch& dispatch = *platform::current().dispatch;
  dispatch.after(tickInterval, dispatch.backgroundQueue(), tickAndRearm);
}

}  // namespace tarni
